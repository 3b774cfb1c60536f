#include "windows/ui/browser_site.h"

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

}  // namespace windows
