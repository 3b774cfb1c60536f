#pragma once

#include <windows.h>

#include <exdisp.h>
#include <mshtmhst.h>
#include <ocidl.h>
#include <oleidl.h>

#include <functional>
#include <string>
#include <utility>

#include "windows/com/dispatch_object.h"
#include "windows/com/home_thread.h"
#include "windows/com/local_server.h"
#include "windows/com/owners.h"

namespace windows {

// What the system's web browser needs from the window around it. The browser may keep these objects after the
// page has gone; Close cuts them off first.

/// The window as the browser's frame: without menus, tools and a status line to lend.
class BrowserFrame final : public com::Implements<IOleInPlaceFrame> {
 public:
  explicit BrowserFrame(HWND window) : window_(window) {}
  void Close() { window_ = nullptr; }

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetBorder(RECT*) override { return INPLACE_E_NOTOOLSPACE; }
  HRESULT STDMETHODCALLTYPE RequestBorderSpace(const BORDERWIDTHS*) override { return INPLACE_E_NOTOOLSPACE; }
  HRESULT STDMETHODCALLTYPE SetBorderSpace(const BORDERWIDTHS*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject*, LPCOLESTR) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, OLEMENUGROUPWIDTHS*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, WORD) override { return S_FALSE; }

 private:
  HWND window_;
};

/// The place in the window, and how the page behaves there: no context menu, no border, text at the screen's
/// resolution.
class BrowserSite final : public com::ClientSite<IOleInPlaceSite, IDocHostUIHandler> {
 public:
  /// `entered` is called when the page gets the keyboard focus.
  BrowserSite(HWND window, const RECT& place, std::function<void()> entered)
      : window_(window),
        place_(place),
        entered_(std::move(entered)),
        frame_(com::Make<BrowserFrame>(window)) {}
  void MoveTo(const RECT& place) { place_ = place; }
  void Close();

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override { return frame_->GetWindow(window); }
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return window_ ? S_OK : S_FALSE; }
  HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnUIActivate() override;
  HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                             RECT* place, RECT* clip, OLEINPLACEFRAMEINFO* info) override;
  HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return S_FALSE; }
  HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnPosRectChange(const RECT*) override { return S_OK; }

  HRESULT STDMETHODCALLTYPE ShowContextMenu(DWORD, POINT*, IUnknown*, IDispatch*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetHostInfo(DOCHOSTUIINFO* info) override;
  HRESULT STDMETHODCALLTYPE ShowUI(DWORD, IOleInPlaceActiveObject*, IOleCommandTarget*, IOleInPlaceFrame*,
                                   IOleInPlaceUIWindow*) override {
    return S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE HideUI() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE UpdateUI() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ResizeBorder(const RECT*, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, const GUID*, DWORD) override { return S_FALSE; }
  HRESULT STDMETHODCALLTYPE GetOptionKeyPath(LPOLESTR* key, DWORD) override;
  HRESULT STDMETHODCALLTYPE GetDropTarget(IDropTarget*, IDropTarget**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetExternal(IDispatch** object) override;
  HRESULT STDMETHODCALLTYPE TranslateUrl(DWORD, LPWSTR, LPWSTR* url) override;
  HRESULT STDMETHODCALLTYPE FilterDataObject(IDataObject*, IDataObject** data) override;

 private:
  HWND window_;
  RECT place_;
  std::function<void()> entered_;
  com::ComPtr<BrowserFrame> frame_;
};

/// Hears the addresses that the browser is about to open, and refuses all once its page is there.
class BrowserEvents final : public com::Implements<IDispatch> {
 public:
  bool stay = false;
  /// The page could not be had; the browser shows one of its own instead.
  bool failed = false;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                                   EXCEPINFO*, UINT*) override;

 protected:
  void* Find(REFIID id) noexcept override;
};

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
