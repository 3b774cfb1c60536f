#pragma once

#include <string_view>

#include "platform/late_bound.h"

namespace windows::com {

/// A new object of a registered class, a control within this process or an object of another one; an Error
/// with the system's number and text where that fails. A class that asks for a licence is given its own key,
/// where the computer has one.
platform::LateBoundPtr CreateObject(std::string_view prog_id);

/// Lets the program that serves an object put its windows in front of this one's, which the system refuses
/// otherwise; without effect where the object is this program's own.
void AllowForeground(const platform::LateBound& object);

}  // namespace windows::com
