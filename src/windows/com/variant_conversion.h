#pragma once

#include <windows.h>

#include <oaidl.h>

#include <vector>

#include "platform/late_bound.h"
#include "windows/com/owners.h"

/// Automation's values and ours. An object of another process is a DispatchObject here; an object that this
/// process publishes goes out as its adapter, and comes back as the object itself.
namespace windows::com {

/// Follows references; integers beyond 32 bits, currency and dates become numbers; "no value", null and a
/// parameter left out are the empty value. An Error with kTypeMismatch for what has no reading, arrays above
/// all.
platform::Value FromVariant(const VARIANT& variant);

/// An Error with kTypeMismatch for an object that has no way out of this process.
Variant ToVariant(const platform::Value& value);

/// Null for null.
platform::LateBoundPtr FromDispatch(const ComPtr<IDispatch>& object);
ComPtr<IDispatch> ToDispatch(const platform::LateBoundPtr& object);

/// The arguments of a call in the order of their declaration. When one has no reading, `position` tells
/// which, as an index into rgvarg.
std::vector<platform::Value> FromParameters(const DISPPARAMS& parameters, UINT& position);

/// Owns the arguments of a call as automation wants them: the last one first.
class CallArguments {
 public:
  explicit CallArguments(platform::Arguments arguments);
  CallArguments(const CallArguments&) = delete;
  CallArguments& operator=(const CallArguments&) = delete;

  /// For a property put the last argument is named as the new value.
  DISPPARAMS Parameters(bool put) noexcept;

 private:
  std::vector<Variant> owners_;
  std::vector<VARIANT> reversed_;
  DISPID put_name_ = DISPID_PROPERTYPUT;
};

}  // namespace windows::com
