#pragma once

#include <windows.h>

namespace windows::com {

/// Removes a class from the machine's registry if its program file is missing. Checks both views of the
/// registry, as the program may have been of the other architecture. Skips what cannot be removed.
///
/// Keeps the class's name and its type library's interfaces: both views share them, so they belong to the
/// program that exists.
void ForgetLostClass(const CLSID& class_id);

}  // namespace windows::com
