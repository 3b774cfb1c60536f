#pragma once

#include <windows.h>

namespace windows::com {

/// Removes what the machine's registry says of a class whose program file is gone. Both views of the registry
/// are looked at: the program may have been of the other architecture. What cannot be removed stays.
///
/// The name of the class and the interfaces of its type library stay as well. Both views share them, so they
/// belong to the program that is there.
void ForgetLostClass(const CLSID& class_id);

}  // namespace windows::com
