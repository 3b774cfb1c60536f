#pragma once

#include <windows.h>

#include <memory>

#include "automation/published.h"
#include "windows/com/owners.h"

namespace windows {

/// The class that directors create under the plug-in's ProgID.
const CLSID& PlugInClassId();

/// Creates the adapter of a plug-in object: the dual interface ILNSPlugInAPI, whose methods and late-bound
/// calls use the object's members 1 to 16. Late-bound callers get the plug-in's own error numbers unchanged.
/// Callers of the methods get them in the facility of controls (20003 as 0x800A4E23), with an error object
/// for the text.
com::ComPtr<IUnknown> MakePlugInAdapter(const std::shared_ptr<automation::Published>& object);

}  // namespace windows
