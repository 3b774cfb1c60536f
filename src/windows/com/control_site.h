#pragma once

#include <windows.h>

#include <ocidl.h>

#include "windows/com/client_site.h"

namespace windows::com {

/// The place of a control that is never shown: it has no container, and of the surroundings it tells that
/// they are at run time, alive, and in the user's language.
class ControlSite final : public ClientSite<IOleControlSite, IDispatch> {
 public:
  HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** control) override;
  HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD) override { return S_FALSE; }
  HRESULT STDMETHODCALLTYPE OnFocus(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** type_info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  /// The ambient properties, which controls ask for by number.
  HRESULT STDMETHODCALLTYPE Invoke(DISPID ambient, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO*, UINT*) override;
};

}  // namespace windows::com
