#pragma once

#include <vector>

#include "model/configuration_screen.h"
#include "model/control_binding.h"
#include "model/point_list.h"

/// The fields of the catalogue, each tied to its point and its control.
namespace model {

using BindingList = std::vector<CNvCtrlTable>;

/// One binding a row, in row order. Throws 5 for a point that the list does not hold and 340 for a control
/// that the screen does not have.
BindingList MakeBindings(const PointList& points, const ConfigurationScreen& screen);

}  // namespace model
