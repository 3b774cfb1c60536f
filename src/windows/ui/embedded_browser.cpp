#include "windows/ui/embedded_browser.h"

#include <exdispid.h>

namespace windows {

using com::None;

HRESULT BrowserFrame::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = window_;
  return window_ ? S_OK : E_FAIL;
}

void BrowserSite::Close() {
  frame_->Close();
  window_ = nullptr;
  entered_ = nullptr;
}

HRESULT BrowserSite::GetOptionKeyPath(LPOLESTR* key, DWORD) { return None(key, E_NOTIMPL); }
HRESULT BrowserSite::GetExternal(IDispatch** object) { return None(object, E_NOTIMPL); }
HRESULT BrowserSite::TranslateUrl(DWORD, LPWSTR, LPWSTR* url) { return None(url, S_FALSE); }
HRESULT BrowserSite::FilterDataObject(IDataObject*, IDataObject** data) { return None(data, S_FALSE); }

HRESULT BrowserSite::OnUIActivate() {
  if (entered_) entered_();
  return S_OK;
}

HRESULT BrowserSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, RECT* place,
                                      RECT* clip, OLEINPLACEFRAMEINFO* info) {
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

HRESULT BrowserSite::GetHostInfo(DOCHOSTUIINFO* info) {
  if (!info) return E_POINTER;
  info->dwFlags = DOCHOSTUIFLAG_NO3DBORDER | DOCHOSTUIFLAG_NO3DOUTERBORDER | DOCHOSTUIFLAG_THEME |
                  DOCHOSTUIFLAG_DPI_AWARE | DOCHOSTUIFLAG_DISABLE_HELP_MENU;
  info->dwDoubleClick = DOCHOSTUIDBLCLK_DEFAULT;
  return S_OK;
}

HRESULT BrowserEvents::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT BrowserEvents::Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                              UINT*) {
  if (event == DISPID_NAVIGATEERROR) failed = true;
  const bool leads_away = event == DISPID_NEWWINDOW2 || event == DISPID_NAVIGATEERROR ||
                          (event == DISPID_BEFORENAVIGATE2 && stay);
  // In all of them the last argument, which comes first, cancels.
  if (leads_away && parameters && parameters->cArgs > 0 && parameters->rgvarg[0].vt == (VT_BYREF | VT_BOOL))
    *parameters->rgvarg[0].pboolVal = VARIANT_TRUE;
  return S_OK;
}

void* BrowserEvents::Find(REFIID id) noexcept {
  return id == __uuidof(DWebBrowserEvents2) ? static_cast<IDispatch*>(this) : Implements::Find(id);
}

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
