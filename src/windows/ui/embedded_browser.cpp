#include "windows/ui/embedded_browser.h"

#include <exdispid.h>
#include <mshtmhst.h>

#include <utility>

#include "windows/com/dispatch_object.h"
#include "windows/com/home_thread.h"

namespace windows {

using com::None;

// The objects that the system's web browser needs from its window. The browser may keep them after the page
// has closed, so Close disconnects them first.

/// The window as the browser's frame, without menus, toolbars and a status line.
class BrowserFrame final : public com::Implements<IOleInPlaceFrame> {
 public:
  explicit BrowserFrame(HWND window) : window_(window) {}
  void Close() { window_ = nullptr; }

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
    if (!window) return E_POINTER;
    *window = window_;
    return window_ ? S_OK : E_FAIL;
  }

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

/// The browser's site in the window. The page has no context menu and no border, and uses the screen's
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

  void Close() {
    frame_->Close();
    window_ = nullptr;
    entered_ = nullptr;
  }

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override { return frame_->GetWindow(window); }
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return window_ ? S_OK : S_FALSE; }
  HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return S_OK; }

  HRESULT STDMETHODCALLTYPE OnUIActivate() override {
    if (entered_) entered_();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                             RECT* place, RECT* clip, OLEINPLACEFRAMEINFO* info) override {
    if (!frame || !document || !place || !clip || !info) return E_POINTER;
    *frame = com::ComPtr<IOleInPlaceFrame>(frame_.get()).Detach();
    *document = nullptr;
    *place = *clip = place_;
    info->fMDIApp = FALSE;
    info->hwndFrame = window_;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return S_FALSE; }
  HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnPosRectChange(const RECT*) override { return S_OK; }

  HRESULT STDMETHODCALLTYPE ShowContextMenu(DWORD, POINT*, IUnknown*, IDispatch*) override { return S_OK; }

  HRESULT STDMETHODCALLTYPE GetHostInfo(DOCHOSTUIINFO* info) override {
    if (!info) return E_POINTER;
    info->dwFlags = DOCHOSTUIFLAG_NO3DBORDER | DOCHOSTUIFLAG_NO3DOUTERBORDER | DOCHOSTUIFLAG_THEME |
                    DOCHOSTUIFLAG_DPI_AWARE | DOCHOSTUIFLAG_DISABLE_HELP_MENU;
    info->dwDoubleClick = DOCHOSTUIDBLCLK_DEFAULT;
    return S_OK;
  }

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
  HRESULT STDMETHODCALLTYPE GetOptionKeyPath(LPOLESTR* key, DWORD) override { return None(key, E_NOTIMPL); }
  HRESULT STDMETHODCALLTYPE GetDropTarget(IDropTarget*, IDropTarget**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetExternal(IDispatch** object) override { return None(object, E_NOTIMPL); }
  HRESULT STDMETHODCALLTYPE TranslateUrl(DWORD, LPWSTR, LPWSTR* url) override { return None(url, S_FALSE); }
  HRESULT STDMETHODCALLTYPE FilterDataObject(IDataObject*, IDataObject** data) override {
    return None(data, S_FALSE);
  }

 private:
  HWND window_;
  RECT place_;
  std::function<void()> entered_;
  com::ComPtr<BrowserFrame> frame_;
};

/// Receives the addresses that the browser is about to open, and refuses all once its page is shown.
class BrowserEvents final : public com::CalledByNumber<com::Implements<IDispatch>> {
 public:
  bool stay = false;
  /// The page could not be opened; the browser shows its own error page.
  bool failed = false;

  HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    if (event == DISPID_NAVIGATEERROR) failed = true;
    const bool leads_away = event == DISPID_NEWWINDOW2 || event == DISPID_NAVIGATEERROR ||
                            (event == DISPID_BEFORENAVIGATE2 && stay);
    // In all of these events the last argument, which is first in the array, cancels.
    if (leads_away && parameters && parameters->cArgs > 0 && parameters->rgvarg[0].vt == (VT_BYREF | VT_BOOL))
      *parameters->rgvarg[0].pboolVal = VARIANT_TRUE;
    return S_OK;
  }

 protected:
  void* Find(REFIID id) noexcept override {
    return id == __uuidof(DWebBrowserEvents2) ? static_cast<IDispatch*>(this) : CalledByNumber::Find(id);
  }
};

EmbeddedBrowser::EmbeddedBrowser(HWND window, const std::wstring& url, std::function<void()> entered)
    : window_(window), events_(com::Make<BrowserEvents>()) {
  RECT beside = Area();
  OffsetRect(&beside, static_cast<int>(beside.right), 0);
  site_ = com::Make<BrowserSite>(window, beside, std::move(entered));
  if (FAILED(CoCreateInstance(__uuidof(::WebBrowser), nullptr, CLSCTX_INPROC_SERVER, __uuidof(IWebBrowser2),
                              browser_.ReceiveVoid())))
    return;
  object_ = browser_.As<IOleObject>();
  if (!object_ || FAILED(object_->SetClientSite(site_.get()))) return;
  browser_->put_Silent(VARIANT_TRUE);
  browser_->put_RegisterAsDropTarget(VARIANT_FALSE);
  ListenToEvents();
  com::Variant address, none;
  address->vt = VT_BSTR;
  address->bstrVal = com::Bstr(std::wstring_view(url)).Detach();
  if (FAILED(object_->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site_.get(), 0, window, &beside)) ||
      FAILED(browser_->Navigate2(address.get(), none.get(), none.get(), none.get(), none.get())))
    events_->failed = true;
}

EmbeddedBrowser::~EmbeddedBrowser() {
  site_->Close();
  if (point_) point_->Unadvise(cookie_);
  if (!object_) return;
  browser_->Stop();
  if (const auto in_place = browser_.As<IOleInPlaceObject>()) in_place->InPlaceDeactivate();
  object_->Close(OLECLOSE_NOSAVE);
  object_->SetClientSite(nullptr);
}

void EmbeddedBrowser::ListenToEvents() {
  const auto container = browser_.As<IConnectionPointContainer>();
  if (!container || FAILED(container->FindConnectionPoint(__uuidof(DWebBrowserEvents2), point_.Receive())))
    return;
  if (FAILED(point_->Advise(events_.get(), &cookie_))) point_.Reset();
}

RECT EmbeddedBrowser::Area() const {
  RECT area{};
  GetClientRect(window_, &area);
  return area;
}

EmbeddedBrowser::State EmbeddedBrowser::state() const {
  if (!object_ || events_->failed) return State::Failed;
  READYSTATE reached = READYSTATE_UNINITIALIZED;
  com::ComPtr<IDispatch> document;
  const bool ready = SUCCEEDED(browser_->get_ReadyState(&reached)) && reached == READYSTATE_COMPLETE &&
                     SUCCEEDED(browser_->get_Document(document.Receive())) && document;
  return ready ? State::Ready : State::Loading;
}

void EmbeddedBrowser::Show(int zoom) {
  events_->stay = true;
  const RECT area = Area();
  site_->MoveTo(area);
  if (const auto in_place = browser_.As<IOleInPlaceObject>()) in_place->SetObjectRects(&area, &area);
  if (std::exchange(zoom_, zoom) == zoom) return;
  constexpr auto kOpticalZoom = static_cast<OLECMDID>(63);
  com::Variant percent;
  percent->vt = VT_I4;
  percent->lVal = zoom;
  browser_->ExecWB(kOpticalZoom, OLECMDEXECOPT_DONTPROMPTUSER, percent.get(), nullptr);
}

void EmbeddedBrowser::TakeFocus() {
  const RECT area = Area();
  object_->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site_.get(), 0, window_, &area);
}

bool EmbeddedBrowser::UseKey(MSG& message) {
  const auto active = browser_.As<IOleInPlaceActiveObject>();
  return active && active->TranslateAccelerator(&message) == S_OK;
}

}  // namespace windows
