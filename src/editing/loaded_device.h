#pragma once

#include "model/bindings.h"
#include "model/point_list.h"

namespace editing {

/// The points and bindings of the device on the screen. A pass that runs keeps them alive; when another
/// command takes the screen in the middle of it, they are dropped, and the pass ends at its next step without
/// a word.
struct LoadedDevice {
  model::PointList points;
  model::BindingList bindings;
  bool dropped = false;
};

}  // namespace editing
