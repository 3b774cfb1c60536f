#pragma once

#include <windows.h>

#include <string>

#include "windows/com/com_ptr.h"

struct IAccPropServices;

namespace windows {

/// Tells screen readers what controls are called and what they are for. Where the system has no such service,
/// a control keeps the name that it has anyway.
class AccessibleTexts {
 public:
  AccessibleTexts();
  ~AccessibleTexts();

  void SetName(HWND control, const std::wstring& name) const;
  void SetDescription(HWND control, const std::wstring& description) const;

 private:
  com::ComPtr<IAccPropServices> services_;
};

}  // namespace windows
