#pragma once

#include <windows.h>

#include <memory>

#include "automation/published.h"
#include "windows/com/owners.h"

namespace windows {

/// The class that directors create under the plug-in's ProgID.
const CLSID& PlugInClassId();

/// Opens the adapter of a plug-in object: the dual interface ILNSPlugInAPI, whose methods and late-bound
/// calls all reach the object's members 1 to 16. The plug-in's own error numbers reach late-bound callers as
/// they are; callers of the methods get them in the facility of controls (20003 as 0x800A4E23) with an error
/// object that has the text.
com::ComPtr<IUnknown> MakePlugInAdapter(const std::shared_ptr<automation::Published>& object);

}  // namespace windows
