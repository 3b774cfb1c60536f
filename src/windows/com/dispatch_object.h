#pragma once

#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>
#include <oleidl.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/late_bound.h"
#include "windows/com/home_thread.h"
#include "windows/com/owners.h"

namespace windows::com {

/// An object reached through IDispatch, in this process or another. Used on the thread that received it;
/// other calls may arrive while one of its own waits.
///
/// Looks up the numbers of its members once per object. Objects do not share them: a name has different
/// numbers in different classes, and a wrong number may be that of another member.
class DispatchObject : public platform::LateBound {
 public:
  explicit DispatchObject(ComPtr<IDispatch> object) : object_(std::move(object)) {}

  /// PutReference falls back to Put if the object has no put by reference.
  platform::Value Invoke(const platform::Member& member, platform::CallKind kind,
                         platform::Arguments arguments) override;
  std::unique_ptr<platform::Subscription> Advise(platform::EventHandler handler) override;

  const ComPtr<IDispatch>& dispatch() const { return object_; }

 private:
  DISPID NumberOf(const platform::Member& member);
  platform::Value Call(DISPID number, WORD flags, DISPPARAMS parameters) const;

  ComPtr<IDispatch> object_;
  std::map<std::string, DISPID, std::less<>> numbers_;
};

/// Creates an object of a registered class, a control in this process or an object in another. Throws an
/// Error with the system's number and text. Uses the class's licence key if the computer has one.
platform::LateBoundPtr CreateObject(std::string_view prog_id);

/// Lets the program that serves an object put its windows in front of this one's, which the system otherwise
/// refuses. No effect for this program's own objects.
void AllowForeground(const platform::LateBound& object);

/// Answers a request of COM for something that does not exist: sets the result to null.
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

}  // namespace windows::com
