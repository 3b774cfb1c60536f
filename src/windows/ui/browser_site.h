#pragma once

#include <windows.h>

#include <exdisp.h>
#include <mshtmhst.h>
#include <oleidl.h>

#include <functional>
#include <utility>

#include "windows/com/client_site.h"
#include "windows/com/com_ptr.h"
#include "windows/com/implements.h"

/// What the system's web browser wants of the window that it stands in. It may keep these objects longer than
/// it is kept itself; Close makes them deaf before.
namespace windows {

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

/// Hears where the browser is about to go, and lets it go nowhere once its page is there.
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

}  // namespace windows
