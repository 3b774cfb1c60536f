#pragma once

#include <windows.h>

#include <oaidl.h>

#include <functional>
#include <map>
#include <string>

#include "platform/late_bound.h"
#include "windows/com/com_ptr.h"

namespace windows::com {

/// An object reached through IDispatch, in this process or in another one. Used on the thread that received
/// it; calls of others come in while one of its own is out.
///
/// The numbers of its members are looked up once per object. They are not shared between objects: one name
/// has different numbers in different classes, and a wrong number may well be that of some other member.
class DispatchObject : public platform::LateBound {
 public:
  explicit DispatchObject(ComPtr<IDispatch> object) : object_(std::move(object)) {}

  /// PutReference falls back to Put where the object knows no put by reference.
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

}  // namespace windows::com
