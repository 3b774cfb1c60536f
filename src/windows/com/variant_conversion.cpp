#include "windows/com/variant_conversion.h"

#include <oleauto.h>

#include <utility>

#include "automation/published.h"
#include "windows/com/adapter.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/failure.h"

namespace windows::com {
namespace {

template <class... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

[[noreturn]] void RaiseMismatch() {
  throw platform::Error(platform::kTypeMismatch, std::string(kAutomation), SystemText(DISP_E_TYPEMISMATCH));
}

platform::Value FromInteger(auto number) {
  if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
  return static_cast<double>(number);
}

platform::Value FromConvertible(const VARIANT& variant) {
  Variant number;
  Check(VariantChangeTypeEx(number.get(), const_cast<VARIANT*>(&variant), LOCALE_INVARIANT, 0, VT_R8));
  return number->dblVal;
}

platform::Value FromUnknown(IUnknown* object) {
  const ComPtr<IDispatch> dispatch = ComPtr<IUnknown>(object).As<IDispatch>();
  if (object && !dispatch) RaiseMismatch();
  return FromDispatch(dispatch);
}

platform::Value FromPlain(const VARIANT& variant) {
  switch (variant.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_ERROR:
      if (variant.scode == DISP_E_PARAMNOTFOUND) return {};
      break;
    case VT_BOOL:
      return variant.boolVal != VARIANT_FALSE;
    case VT_I1:
      return static_cast<std::int32_t>(static_cast<signed char>(variant.bVal));
    case VT_UI1:
      return static_cast<std::int32_t>(variant.bVal);
    case VT_I2:
      return static_cast<std::int32_t>(variant.iVal);
    case VT_UI2:
      return static_cast<std::int32_t>(variant.uiVal);
    case VT_I4:
    case VT_INT:
      return static_cast<std::int32_t>(variant.lVal);
    case VT_UI4:
    case VT_UINT:
      return FromInteger(variant.ulVal);
    case VT_I8:
      return FromInteger(variant.llVal);
    case VT_UI8:
      return FromInteger(variant.ullVal);
    case VT_R4:
      return static_cast<double>(variant.fltVal);
    case VT_R8:
      return variant.dblVal;
    case VT_DATE:
      return variant.date;
    case VT_CY:
    case VT_DECIMAL:
      return FromConvertible(variant);
    case VT_BSTR:
      return TextOf(variant.bstrVal);
    case VT_DISPATCH:
      return FromDispatch(ComPtr<IDispatch>(variant.pdispVal));
    case VT_UNKNOWN:
      return FromUnknown(variant.punkVal);
  }
  RaiseMismatch();
}

}  // namespace

platform::Value FromVariant(const VARIANT& variant) {
  if (variant.vt & VT_ARRAY) RaiseMismatch();
  if (!(variant.vt & VT_BYREF)) return FromPlain(variant);
  Variant plain;
  if (FAILED(VariantCopyInd(plain.get(), const_cast<VARIANT*>(&variant)))) RaiseMismatch();
  return FromPlain(*plain.get());
}

Variant ToVariant(const platform::Value& value) {
  Variant variant;
  VARIANT& v = *variant.get();
  std::visit(Overloaded{[](std::monostate) {},
                        [&v](bool b) {
                          v.boolVal = b ? VARIANT_TRUE : VARIANT_FALSE;
                          v.vt = VT_BOOL;
                        },
                        [&v](std::int32_t n) {
                          v.lVal = n;
                          v.vt = VT_I4;
                        },
                        [&v](double d) {
                          v.dblVal = d;
                          v.vt = VT_R8;
                        },
                        [&v](const std::string& s) {
                          v.bstrVal = Bstr(s).Detach();
                          v.vt = VT_BSTR;
                        },
                        [&v](const platform::LateBoundPtr& object) {
                          v.pdispVal = ToDispatch(object).Detach();
                          v.vt = VT_DISPATCH;
                        }},
             value);
  return variant;
}

platform::LateBoundPtr FromDispatch(const ComPtr<IDispatch>& object) {
  if (!object) return nullptr;
  if (auto own = PublishedBehind(object.get())) return own;
  return std::make_shared<DispatchObject>(object);
}

ComPtr<IDispatch> ToDispatch(const platform::LateBoundPtr& object) {
  if (!object) return nullptr;
  if (const auto foreign = std::dynamic_pointer_cast<DispatchObject>(object)) return foreign->dispatch();
  if (const auto own = std::dynamic_pointer_cast<automation::Published>(object))
    return DispatchAdapter::For(own);
  throw platform::Error(platform::kTypeMismatch, std::string(kAutomation), "The object is not published.");
}

std::vector<platform::Value> FromParameters(const DISPPARAMS& parameters, UINT& position) {
  std::vector<platform::Value> arguments;
  arguments.reserve(parameters.cArgs);
  for (UINT left = parameters.cArgs; left > 0; --left) {
    position = left - 1;
    arguments.push_back(FromVariant(parameters.rgvarg[left - 1]));
  }
  return arguments;
}

CallArguments::CallArguments(platform::Arguments arguments) {
  for (std::size_t left = arguments.size(); left > 0; --left)
    owners_.push_back(ToVariant(arguments[left - 1]));
  for (const Variant& owner : owners_) reversed_.push_back(*owner.get());
}

DISPPARAMS CallArguments::Parameters(bool put) noexcept {
  return {.rgvarg = reversed_.data(),
          .rgdispidNamedArgs = put ? &put_name_ : nullptr,
          .cArgs = static_cast<UINT>(reversed_.size()),
          .cNamedArgs = put ? 1u : 0u};
}

}  // namespace windows::com
