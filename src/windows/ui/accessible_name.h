#pragma once

#include <windows.h>

#include <string>

namespace windows {

/// Tells screen readers what a control is called. Where the system has no such service the control keeps the
/// name that it would have anyway.
void SetAccessibleName(HWND control, const std::wstring& name);
/// Tells them what it is for.
void SetAccessibleDescription(HWND control, const std::wstring& description);

}  // namespace windows
