#include "windows/com/dispatch_object.h"

#include <olectl.h>

#include "windows/com/events.h"
#include "windows/com/failure.h"
#include "windows/com/registration.h"
#include "windows/com/variant_conversion.h"
#include "windows/com/wide_text.h"

namespace windows::com {
namespace {

using platform::CallKind;

WORD FlagsOf(CallKind kind) {
  switch (kind) {
    case CallKind::Put:
      return DISPATCH_PROPERTYPUT;
    case CallKind::PutReference:
      return DISPATCH_PROPERTYPUTREF;
    case CallKind::Method:
      return DISPATCH_METHOD;
    // As in Visual Basic; some objects accept reads only in this form.
    case CallKind::Get:
    case CallKind::GetOrMethod:
      return DISPATCH_METHOD | DISPATCH_PROPERTYGET;
  }
  return 0;
}

bool IsPut(CallKind kind) { return kind == CallKind::Put || kind == CallKind::PutReference; }

HRESULT CreateInProcess(const CLSID& class_id, ComPtr<IDispatch>& object) {
  const HRESULT result =
      CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IDispatch), object.ReceiveVoid());
  if (result != CLASS_E_NOTLICENSED) return result;
  ComPtr<IClassFactory2> factory;
  Bstr key;
  if (FAILED(CoGetClassObject(class_id, CLSCTX_INPROC_SERVER, nullptr, __uuidof(IClassFactory2),
                              factory.ReceiveVoid())) ||
      FAILED(factory->RequestLicKey(0, key.Receive())))
    return result;
  return factory->CreateInstanceLic(nullptr, nullptr, __uuidof(IDispatch), key.get(), object.ReceiveVoid());
}

/// Initialises the control as new, not loaded.
void Initialise(const ComPtr<IDispatch>& control) {
  if (const auto stream = control.As<IPersistStreamInit>())
    stream->InitNew();
  else if (const auto bag = control.As<IPersistPropertyBag>())
    bag->InitNew();
}

bool WantsSiteFirst(IOleObject& object) {
  DWORD traits = 0;
  return SUCCEEDED(object.GetMiscStatus(DVASPECT_CONTENT, &traits)) &&
         (traits & OLEMISC_SETCLIENTSITEFIRST) != 0;
}

/// The site of a control that is never shown. It has no container; its ambient properties are run time,
/// alive, and the user's language.
class ControlSite final : public CalledByNumber<ClientSite<IOleControlSite, IDispatch>> {
 public:
  HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** control) override {
    return None(control, E_NOTIMPL);
  }
  HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD) override { return S_FALSE; }
  HRESULT STDMETHODCALLTYPE OnFocus(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID ambient, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO*, UINT*) override {
    if (!result || !(flags & DISPATCH_PROPERTYGET)) return DISP_E_MEMBERNOTFOUND;
    VariantInit(result);
    switch (ambient) {
      case DISPID_AMBIENT_USERMODE:
      case DISPID_AMBIENT_UIDEAD:
        result->boolVal = ambient == DISPID_AMBIENT_USERMODE ? VARIANT_TRUE : VARIANT_FALSE;
        result->vt = VT_BOOL;
        return S_OK;
      case DISPID_AMBIENT_LOCALEID:
        result->lVal = static_cast<LONG>(GetUserDefaultLCID());
        result->vt = VT_I4;
        return S_OK;
      default:
        return DISP_E_MEMBERNOTFOUND;
    }
  }
};

constexpr bool kIs64Bit = sizeof(void*) == 8;
constexpr const char* kOtherBits =
    kIs64Bit ? "it is a 32-bit control, which a 64-bit program cannot load. Use the 32-bit program."
             : "it is a 64-bit control, which a 32-bit program cannot load. Use the 64-bit program.";

/// The class is a control for programs with the other number of bits.
bool IsControlOfOtherBits(const CLSID& class_id) {
  wchar_t text[39] = L"";
  StringFromGUID2(class_id, text, static_cast<int>(std::size(text)));
  const std::wstring path = L"SOFTWARE\\Classes\\CLSID\\" + std::wstring(text) + L"\\InprocServer32";
  HKEY key = nullptr;
  const REGSAM view = kIs64Bit ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
  const bool found =
      RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ | view, &key) == ERROR_SUCCESS;
  const Key closer(key);
  return found;
}

/// A control that runs in this process without a window: initialised, given a site, and closed at the end.
/// Objects that are not controls need none of this.
class HostedControl final : public DispatchObject {
 public:
  /// Ignores refusals; if the control needs one of these steps, its calls fail.
  explicit HostedControl(ComPtr<IDispatch> control)
      : DispatchObject(std::move(control)), object_(dispatch().As<IOleObject>()) {
    const bool site_first = object_ && WantsSiteFirst(*object_.get());
    if (!site_first) Initialise(dispatch());
    if (object_) object_->SetClientSite(Make<ControlSite>().get());
    if (site_first) Initialise(dispatch());
  }

  HostedControl(const HostedControl&) = delete;
  HostedControl& operator=(const HostedControl&) = delete;

  ~HostedControl() override {
    if (!object_) return;
    object_->Close(OLECLOSE_NOSAVE);
    object_->SetClientSite(nullptr);
  }

 private:
  ComPtr<IOleObject> object_;
};

}  // namespace

platform::Value DispatchObject::Invoke(const platform::Member& member, CallKind kind,
                                       platform::Arguments arguments) {
  const DISPID number = NumberOf(member);
  CallArguments call(arguments);
  const DISPPARAMS parameters = call.Parameters(IsPut(kind));
  if (kind != CallKind::PutReference) return Call(number, FlagsOf(kind), parameters);
  try {
    return Call(number, DISPATCH_PROPERTYPUTREF, parameters);
  } catch (const platform::Error& error) {
    if (error.number() != platform::kMemberNotFound) throw;
  }
  return Call(number, DISPATCH_PROPERTYPUT, parameters);
}

DISPID DispatchObject::NumberOf(const platform::Member& member) {
  if (member.number != platform::Member::kNoNumber) return member.number;
  if (const auto known = numbers_.find(member.name); known != numbers_.end()) return known->second;
  std::wstring name = ToWide(member.name);
  LPOLESTR names = name.data();
  DISPID number = DISPID_UNKNOWN;
  Check(object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &number), member.name);
  numbers_.emplace(member.name, number);
  return number;
}

platform::Value DispatchObject::Call(DISPID number, WORD flags, DISPPARAMS parameters) const {
  const bool put = parameters.cNamedArgs != 0;
  const ComPtr<IDispatch> object = object_;
  Variant result;
  ExceptionInfo info;
  UINT bad_argument = 0;
  const HRESULT outcome = object->Invoke(number, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                         put ? nullptr : result.get(), info.get(), &bad_argument);
  if (FAILED(outcome)) throw CallError(outcome, info);
  return FromVariant(*result.get());
}

std::unique_ptr<platform::Subscription> DispatchObject::Advise(platform::EventHandler handler) {
  return SubscribeToDefaultEvents(object_.get(), std::move(handler));
}

/// Only objects of this process can be controls to host; asking others would cost a call each time. If this
/// process has the class, other processes are not tried: COM might start one to host the control.
platform::LateBoundPtr CreateObject(std::string_view prog_id) {
  const std::string attempt = "Cannot create the object \"" + std::string(prog_id) + "\"";
  CLSID class_id;
  Check(CLSIDFromProgID(ToWide(prog_id).c_str(), &class_id), attempt);
  ComPtr<IDispatch> object;
  const HRESULT result = CreateInProcess(class_id, object);
  if (result != REGDB_E_CLASSNOTREG) {
    Check(result, attempt);
    return std::make_shared<HostedControl>(std::move(object));
  }
  const HRESULT elsewhere =
      CoCreateInstance(class_id, nullptr, CLSCTX_LOCAL_SERVER, __uuidof(IDispatch), object.ReceiveVoid());
  // The system may see the class of the other number of bits, and miss a server in it.
  const bool is_missing = elsewhere == REGDB_E_CLASSNOTREG || elsewhere == REGDB_E_KEYMISSING;
  if (is_missing && IsControlOfOtherBits(class_id))
    throw platform::Error(REGDB_E_CLASSNOTREG, std::string(kAutomation), attempt + ": " + kOtherBits);
  Check(elsewhere, attempt);
  return FromDispatch(object);
}

void AllowForeground(const platform::LateBound& object) {
  if (const auto* remote = dynamic_cast<const DispatchObject*>(&object))
    CoAllowSetForegroundWindow(remote->dispatch().get(), nullptr);
}

}  // namespace windows::com
