#include "windows/ui/embedded_browser.h"

#include <utility>

#include "windows/com/owners.h"

namespace windows {

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
