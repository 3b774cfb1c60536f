// What an installation does at its end, when it cannot be undone any more: the class of a program of the
// other architecture that has gone would keep directors from the one that is there.

#include <windows.h>

#include <msi.h>

#include "windows/com/lost_class.h"
#include "windows/plugin/plug_in_adapter.h"

extern "C" UINT __stdcall ForgetLostClass(MSIHANDLE) {
  windows::com::ForgetLostClass(windows::PlugInClassId());
  return ERROR_SUCCESS;
}
