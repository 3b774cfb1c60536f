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

/// Gives screen readers the names and descriptions of controls. If the system has no such service,
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

class FormShell;

/// What all windows of the user-interface thread share.
///
/// Every window procedure runs its body through Dispatch: nothing thrown leaves it, and the depth shows when
/// it is safe to destroy windows. A form may close in the middle of an event of one of its own controls. Its
/// window then goes in this order:
///   1. its controls forget their peers, so that the form reaches no window any more;
///   2. the window is hidden and hears nothing: a procedure of it that is still running ends without touching
///      form or controls, which may be gone;
///   3. when no procedure runs any more, the windows are destroyed, then the peers, then the shell.
class UiThread {
 public:
  using FailureHandler = std::function<void(const std::exception&)>;
  /// A resolution that is given is that of the process and of all windows as they are made; 0 is the
  /// system's.
  UiThread(int dpi, FailureHandler on_failure);
  ~UiThread();
  UiThread(const UiThread&) = delete;
  UiThread& operator=(const UiThread&) = delete;

  HINSTANCE instance() const;

  /// The same for all windows on all screens: a place that is written in pixels is read back unchanged.
  double TwipsPerPixel() const { return 1440.0 / dpi_; }
  /// The resolution at which a window is made.
  int FirstDpi(HWND window) const;
  /// That at which a window, or the one around it, is shown.
  int ShownDpi(HWND window) const;
  /// Made when it is first asked for, and again when the system's font has changed.
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

  /// Runs a message loop, counted, so that only the outermost destroys windows.
  template <class Body>
  void Loop(Body body) {
    const Count running(loops_);
    body();
  }

  /// What a message loop does with a message: first to whom it matters beside its window, then to that.
  void Deliver(MSG& message) noexcept;

  FormShell& Adopt(std::unique_ptr<FormShell> shell);
  const std::vector<std::unique_ptr<FormShell>>& shells() const { return shells_; }
  /// Destroys the windows of closed forms if nothing of them can be running.
  void DestroyClosed() noexcept;

  HtmlHelp help;
  const AccessibleTexts accessible;
  bool hourglass = false;
  /// How many message boxes have come up so far.
  int messages_shown = 0;

 private:
  /// A key for a window inside that of a control: true when the control has used it.
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
