#pragma once

#include <windows.h>

#include <oleidl.h>

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

}  // namespace windows::com
