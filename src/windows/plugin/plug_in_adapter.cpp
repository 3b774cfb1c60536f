#include "windows/plugin/plug_in_adapter.h"

#include <LNSPlugInAPI.h>
#include <oleauto.h>

#include <array>

#include "automation/convert.h"
#include "windows/com/adapter.h"
#include "windows/com/failure.h"
#include "windows/com/registration.h"

namespace windows {
namespace {

using platform::CallKind;
using platform::Value;

class PlugInAdapter final : public com::Adapter<ILNSPlugInAPI, ISupportErrorInfo> {
 public:
  using Adapter::Adapter;

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
    return id == __uuidof(ILNSPlugInAPI) ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE SendCommand(long command, long object_type, BSTR data) override {
    return Guarded([&] {
      const std::array<Value, 3> arguments{static_cast<std::int32_t>(command),
                                           static_cast<std::int32_t>(object_type), com::TextOf(data)};
      object()->Invoke({"SendCommand", 1}, CallKind::Method, arguments);
    });
  }

  HRESULT STDMETHODCALLTYPE get_Visible(VARIANT_BOOL* value) override { return Read(2, value); }
  HRESULT STDMETHODCALLTYPE put_Visible(VARIANT_BOOL value) override { return Write(2, value); }
  HRESULT STDMETHODCALLTYPE get_networkName(BSTR* value) override { return Read(3, value); }
  HRESULT STDMETHODCALLTYPE put_networkName(BSTR value) override { return Write(3, value); }
  HRESULT STDMETHODCALLTYPE get_NetworkInterfaceName(BSTR* value) override { return Read(4, value); }
  HRESULT STDMETHODCALLTYPE put_NetworkInterfaceName(BSTR value) override { return Write(4, value); }
  HRESULT STDMETHODCALLTYPE get_Remote(VARIANT_BOOL* value) override { return Read(5, value); }
  HRESULT STDMETHODCALLTYPE put_Remote(VARIANT_BOOL value) override { return Write(5, value); }
  HRESULT STDMETHODCALLTYPE get_Height(long* value) override { return Read(6, value); }
  HRESULT STDMETHODCALLTYPE put_Height(long value) override { return Write(6, value); }
  HRESULT STDMETHODCALLTYPE get_Width(long* value) override { return Read(7, value); }
  HRESULT STDMETHODCALLTYPE put_Width(long value) override { return Write(7, value); }
  HRESULT STDMETHODCALLTYPE get_left(long* value) override { return Read(8, value); }
  HRESULT STDMETHODCALLTYPE put_left(long value) override { return Write(8, value); }
  HRESULT STDMETHODCALLTYPE get_Minimized(VARIANT_BOOL* value) override { return Read(9, value); }
  HRESULT STDMETHODCALLTYPE put_Minimized(VARIANT_BOOL value) override { return Write(9, value); }
  HRESULT STDMETHODCALLTYPE get_ManufacturerID(BSTR* value) override { return Read(10, value); }
  HRESULT STDMETHODCALLTYPE put_ManufacturerID(BSTR value) override { return Write(10, value); }
  HRESULT STDMETHODCALLTYPE get_ManufacturerName(BSTR* value) override { return Read(11, value); }
  HRESULT STDMETHODCALLTYPE put_ManufacturerName(BSTR value) override { return Write(11, value); }
  HRESULT STDMETHODCALLTYPE get_LcaVersion(BSTR* value) override { return Read(12, value); }
  HRESULT STDMETHODCALLTYPE put_LcaVersion(BSTR value) override { return Write(12, value); }
  HRESULT STDMETHODCALLTYPE get_Version(BSTR* value) override { return Read(13, value); }
  HRESULT STDMETHODCALLTYPE put_Version(BSTR value) override { return Write(13, value); }
  HRESULT STDMETHODCALLTYPE get_top(long* value) override { return Read(14, value); }
  HRESULT STDMETHODCALLTYPE put_top(long value) override { return Write(14, value); }
  HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) override { return Read(15, value); }
  HRESULT STDMETHODCALLTYPE put_Name(BSTR value) override { return Write(15, value); }
  HRESULT STDMETHODCALLTYPE get_DevelopmentProgramId(BSTR* value) override { return Read(16, value); }
  HRESULT STDMETHODCALLTYPE put_DevelopmentProgramId(BSTR value) override { return Write(16, value); }

 private:
  template <class Work>
  HRESULT Guarded(Work&& work) noexcept {
    try {
      // The object outlives the call even if its director releases it meanwhile.
      const std::shared_ptr<automation::Published> keep = object();
      work();
      return S_OK;
    } catch (...) {
      return com::ReportToInterface(__uuidof(ILNSPlugInAPI));
    }
  }

  static void Store(const Value& value, BSTR* out) { *out = com::Bstr(automation::ToText(value)).Detach(); }
  static void Store(const Value& value, long* out) { *out = automation::ToInteger(value); }
  static void Store(const Value& value, VARIANT_BOOL* out) {
    *out = automation::ToBoolean(value) ? VARIANT_TRUE : VARIANT_FALSE;
  }

  static Value Load(BSTR value) { return com::TextOf(value); }
  static Value Load(long value) { return static_cast<std::int32_t>(value); }
  static Value Load(VARIANT_BOOL value) { return value != VARIANT_FALSE; }

  template <class Out>
  HRESULT Read(std::int32_t number, Out* out) noexcept {
    if (!out) return E_POINTER;
    *out = Out{};
    return Guarded([&] { Store(object()->Invoke({"", number}, CallKind::Get, {}), out); });
  }

  template <class In>
  HRESULT Write(std::int32_t number, In in) noexcept {
    return Guarded([&] {
      const Value value = Load(in);
      object()->Invoke({"", number}, CallKind::Put, {&value, 1});
    });
  }
};

/// From the program's type library; null if it has none. Late-bound callers do not need it.
com::ComPtr<ITypeInfo> InterfaceDescription() {
  com::ComPtr<ITypeLib> library;
  com::ComPtr<ITypeInfo> description;
  if (SUCCEEDED(LoadTypeLibEx(ToWide(com::ThisProgram()).c_str(), REGKIND_NONE, library.Receive())))
    static_cast<void>(library->GetTypeInfoOfGuid(__uuidof(ILNSPlugInAPI), description.Receive()));
  return description;
}

}  // namespace

const CLSID& PlugInClassId() { return __uuidof(LNSPlugInAPI); }

com::ComPtr<IUnknown> MakePlugInAdapter(const std::shared_ptr<automation::Published>& object) {
  return com::Make<PlugInAdapter>(object, InterfaceDescription()).As<IUnknown>();
}

}  // namespace windows
