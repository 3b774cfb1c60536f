#pragma once

#include <windows.h>

#include <oaidl.h>

#include <vector>

#include "platform/late_bound.h"
#include "windows/com/owners.h"

/// Converts between automation's values and ours. An object of another process becomes a DispatchObject. An
/// object that this process publishes leaves as its adapter and returns as the object itself.
namespace windows::com {

/// Follows references. Integers beyond 32 bits, currency and dates become numbers; "no value", null and
/// omitted parameters become the empty value. Throws kTypeMismatch for anything else, such as arrays.
platform::Value FromVariant(const VARIANT& variant);

/// Throws kTypeMismatch for an object that cannot leave this process.
Variant ToVariant(const platform::Value& value);

/// Null becomes null.
platform::LateBoundPtr FromDispatch(const ComPtr<IDispatch>& object);
ComPtr<IDispatch> ToDispatch(const platform::LateBoundPtr& object);

/// The arguments of a call in the order of their declaration. If one cannot be converted, `position` is its
/// index in rgvarg.
std::vector<platform::Value> FromParameters(const DISPPARAMS& parameters, UINT& position);

/// Owns the arguments of a call in automation's order: the last first.
class CallArguments {
 public:
  explicit CallArguments(platform::Arguments arguments);
  CallArguments(const CallArguments&) = delete;
  CallArguments& operator=(const CallArguments&) = delete;

  /// For a put, names the last argument as the new value.
  DISPPARAMS Parameters(bool put) noexcept;

 private:
  std::vector<Variant> owners_;
  std::vector<VARIANT> reversed_;
  DISPID put_name_ = DISPID_PROPERTYPUT;
};

}  // namespace windows::com
