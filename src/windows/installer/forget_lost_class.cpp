// Runs at the end of an installation, when it can no longer be rolled back: otherwise directors would find
// the class of a removed program of the other architecture.

#include <windows.h>

#include <msi.h>

#include "windows/com/lost_class.h"
#include "windows/plugin/plug_in_adapter.h"

extern "C" UINT __stdcall ForgetLostClass(MSIHANDLE) {
  windows::com::ForgetLostClass(windows::PlugInClassId());
  return ERROR_SUCCESS;
}
