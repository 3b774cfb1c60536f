#pragma once

#include <span>
#include <string_view>

#include "model/screen_layout.h"

/// What each field of the screen means, in the words of a commissioning engineer.
namespace model {

struct FieldGuide {
  ControlRef control;
  /// One sentence, without the range.
  std::string_view meaning;
};

std::span<const FieldGuide> FieldGuides();

/// Null for a control that is no field.
const FieldGuide* GuideOf(ControlRef control);

}  // namespace model
