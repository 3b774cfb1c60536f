#pragma once

#include <windows.h>

#include <oaidl.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/late_bound.h"
#include "windows/com/owners.h"

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

/// A new object of a registered class, a control within this process or an object of another one; an Error
/// with the system's number and text where that fails. A class that asks for a licence is given its own key,
/// where the computer has one.
platform::LateBoundPtr CreateObject(std::string_view prog_id);

/// Lets the program that serves an object put its windows in front of this one's, which the system refuses
/// otherwise; without effect where the object is this program's own.
void AllowForeground(const platform::LateBound& object);

}  // namespace windows::com
