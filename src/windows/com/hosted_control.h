#pragma once

#include <windows.h>

#include <oleidl.h>

#include "windows/com/control_site.h"
#include "windows/com/dispatch_object.h"

namespace windows::com {

/// A control that runs in this process without a window: initialised, given a site where it wants one, and
/// closed at the end. An object that is no control is none of that and serves as it is.
class HostedControl final : public DispatchObject {
 public:
  explicit HostedControl(ComPtr<IDispatch> control);
  HostedControl(const HostedControl&) = delete;
  HostedControl& operator=(const HostedControl&) = delete;
  ~HostedControl() override;

 private:
  ComPtr<IOleObject> object_;
};

}  // namespace windows::com
