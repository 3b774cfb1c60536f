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

/// The system's web browser in a window, with one page, which the user cannot leave. Destroy it before the
/// window.
///
/// Tested only under Wine without its HTML engine, in which no page ever becomes ready: the code after
/// State::Ready has only run with the state forced and the browser's window blank.
class EmbeddedBrowser {
 public:
  /// Starts to load the page, invisibly beside the window's client area. `entered` is called when the page
  /// gets the keyboard focus.
  EmbeddedBrowser(HWND window, const std::wstring& url, std::function<void()> entered);
  ~EmbeddedBrowser();
  EmbeddedBrowser(const EmbeddedBrowser&) = delete;
  EmbeddedBrowser& operator=(const EmbeddedBrowser&) = delete;

  enum class State { Loading, Ready, Failed };
  State state() const;

  /// Fills the window's client area with the page; zoom in percent of the size at the program's resolution.
  void Show(int zoom);
  void TakeFocus();
  /// A key for one of the browser's windows. True if the browser used it.
  bool UseKey(MSG& message);

 private:
  RECT Area() const;
  void ListenToEvents();

  const com::Apartment apartment_;  // keeps OLE initialised until the browser is destroyed
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
