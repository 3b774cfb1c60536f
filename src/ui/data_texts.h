#pragma once

#include <string>
#include <vector>

#include "ui/layout.h"

namespace ui {

/// The texts outside of fields that tell about the device, as the window shows them now: those of its data
/// labels and the panels of its status bar. Empty ones are left out.
std::vector<std::string> DataTexts(const Box& layout);

}  // namespace ui
