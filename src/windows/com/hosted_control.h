#pragma once

#include <windows.h>

#include <ocidl.h>
#include <oleidl.h>

#include "windows/com/dispatch_object.h"
#include "windows/com/implements.h"

namespace windows::com {

/// What COM asks for when there is nothing to give: nothing, with that answer.
template <class T>
HRESULT None(T** result, HRESULT answer) {
  if (!result) return E_POINTER;
  *result = nullptr;
  return answer;
}

/// The place of an embedded object that is kept in no document; further interfaces come with what derives
/// from it.
template <class... Others>
class ClientSite : public Implements<IOleClientSite, Others...> {
 public:
  HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) override {
    return None(moniker, E_NOTIMPL);
  }
  HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override {
    return None(container, E_NOINTERFACE);
  }
  HRESULT STDMETHODCALLTYPE ShowObject() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
};

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

/// A control that runs in this process without a window: initialised, given a site where it wants one, and
/// closed at the end. An object that is no control is none of that and serves as it is.
class HostedControl final : public DispatchObject {
 public:
  explicit HostedControl(ComPtr<IDispatch> control);
  HostedControl(const HostedControl&) = delete;
  HostedControl& operator=(const HostedControl&) = delete;
  ~HostedControl() override;

 private:
  ComPtr<IOleObject> object_;
};

}  // namespace windows::com
