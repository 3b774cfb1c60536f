#pragma once

#include <windows.h>

#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "windows/com/owners.h"
#include "windows/ui/shell_services.h"
#include "windows/ui/theme.h"

struct IAccPropServices;

namespace windows {

/// Gives screen readers the names and descriptions of controls. Without this system service a control keeps
/// its default name.
class AccessibleTexts {
 public:
  AccessibleTexts();
  ~AccessibleTexts();

  void SetName(HWND control, const std::wstring& name) const;
  void SetDescription(HWND control, const std::wstring& description) const;

 private:
  com::ComPtr<IAccPropServices> services_;
};

class FormShell;

/// What all windows of the user-interface thread share.
///
/// Every window procedure runs its body through Dispatch, which lets no exception escape and counts the
/// depth, so that windows are destroyed only when that is safe. A form may close during an event of one of
/// its own controls. Its window then goes in this order:
///   1. its controls forget their peers, so the form can no longer reach a window;
///   2. the window is hidden and gets no messages: procedures that still run end without touching the form or
///      its controls, which may no longer exist;
///   3. when no procedure runs any more, the windows are destroyed, then the peers, then the shell.
class UiThread {
 public:
  using FailureHandler = std::function<void(const std::exception&)>;
  /// A given resolution is that of the process and of all new windows; 0 means the system's.
  UiThread(int dpi, FailureHandler on_failure);
  ~UiThread();
  UiThread(const UiThread&) = delete;
  UiThread& operator=(const UiThread&) = delete;

  HINSTANCE instance() const;

  /// The same for all windows on all screens, so that a place written in pixels is read back unchanged.
  double TwipsPerPixel() const { return 1440.0 / dpi_; }
  /// The resolution at which a window is created.
  int FirstDpi(HWND window) const;
  /// The resolution at which a window, or the one around it, is shown.
  int ShownDpi(HWND window) const;
  /// Created when first needed, and again after the system's font has changed.
  std::shared_ptr<const Theme> ThemeFor(int dpi);

  template <class Body>
  LRESULT Dispatch(Body body) noexcept {
    const Count running(procedures_);
    try {
      return body();
    } catch (const std::exception& failure) {
      Report(failure);
    } catch (...) {
      ReportUnknown();
    }
    return 0;
  }

  /// Runs and counts a message loop: only the outermost one destroys windows.
  template <class Body>
  void Loop(Body body) {
    const Count running(loops_);
    body();
  }

  /// Handles a message of a loop: passes it first to those who also need it, then to its window.
  void Deliver(MSG& message) noexcept;

  FormShell& Adopt(std::unique_ptr<FormShell> shell);
  const std::vector<std::unique_ptr<FormShell>>& shells() const { return shells_; }
  /// Destroys the windows of closed forms if none of their code can be running.
  void DestroyClosed() noexcept;

  HtmlHelp help;
  const AccessibleTexts accessible;
  bool hourglass = false;
  /// The number of message boxes shown so far.
  int messages_shown = 0;

 private:
  /// A key for a child of a control's window. True if the control used it.
  bool UseKey(MSG& message) noexcept;

  struct Count {
    explicit Count(int& counted) : counter(counted) { ++counter; }
    ~Count() { --counter; }
    int& counter;
  };
  void Report(const std::exception& failure) noexcept;
  void ReportUnknown() noexcept;

  const int dpi_;
  const bool dpi_is_given_;
  std::map<int, std::shared_ptr<const Theme>> themes_;
  FailureHandler on_failure_;
  int procedures_ = 0;
  int loops_ = 0;
  std::vector<std::unique_ptr<FormShell>> shells_;
};

}  // namespace windows
