#pragma once

#include <windows.h>

#include <ocidl.h>
#include <oleidl.h>

#include "windows/com/dispatch_object.h"
#include "windows/com/implements.h"

namespace windows::com {

/// For something that COM asks for and that does not exist: sets it to null and returns the answer.
template <class T>
HRESULT None(T** result, HRESULT answer) {
  if (!result) return E_POINTER;
  *result = nullptr;
  return answer;
}

/// The site of an embedded object that is not part of a document; derived classes add interfaces.
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

/// The site of a control that is never shown. It has no container; its ambient properties are run time,
/// alive, and the user's language.
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
  HRESULT STDMETHODCALLTYPE Invoke(DISPID ambient, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO*, UINT*) override;
};

/// A control that runs in this process without a window: initialised, given a site, and closed at the end. An
/// object that is not a control needs none of this.
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
