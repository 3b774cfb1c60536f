#pragma once

#include <windows.h>

#include <exdisp.h>
#include <ocidl.h>
#include <oleidl.h>

#include <functional>
#include <string>

#include "windows/com/local_server.h"
#include "windows/com/owners.h"

namespace windows {

class BrowserEvents;
class BrowserSite;

/// The system's web browser inside a window, on one page, which the user cannot leave. It goes before its
/// window does.
///
/// All of this was tried under Wine without its HTML engine, in which no page ever becomes ready: what
/// follows from State::Ready has only been run with the state forced and the browser's window blank.
class EmbeddedBrowser {
 public:
  /// Begins to load the page, out of sight beside the window's client area. `entered` is called when the page
  /// gets the keyboard focus.
  EmbeddedBrowser(HWND window, const std::wstring& url, std::function<void()> entered);
  ~EmbeddedBrowser();
  EmbeddedBrowser(const EmbeddedBrowser&) = delete;
  EmbeddedBrowser& operator=(const EmbeddedBrowser&) = delete;

  enum class State { Loading, Ready, Failed };
  State state() const;

  /// Fills the window's client area, in hundredths of the size that the page has at the program's resolution.
  void Show(int zoom);
  void TakeFocus();
  /// A key for one of the browser's windows. True when the browser has used it.
  bool UseKey(MSG& message);

 private:
  RECT Area() const;
  void ListenToEvents();

  const com::Apartment apartment_;  // holds OLE until the browser is gone
  HWND window_;
  com::ComPtr<IWebBrowser2> browser_;
  com::ComPtr<IOleObject> object_;
  com::ComPtr<BrowserSite> site_;
  com::ComPtr<BrowserEvents> events_;
  com::ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  int zoom_ = 100;
};

}  // namespace windows
