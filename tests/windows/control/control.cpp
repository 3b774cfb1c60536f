// The simulated object server as a control in its client's process. Its setting "Demands" lists what it
// requires, as older controls do: "licence" ("no key" if there is none), "init", "site", "first" (the site
// before InitNew), "basic" (calls as in Visual Basic) and "thread" (events on another thread).

#include "simulator/simulation.h"

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <thread>

#include "registry/registry.h"
#include "windows/com/adapter.h"
#include "windows/com/failure.h"
#include "windows/com/variant_conversion.h"
#include "windows/com/wide_text.h"
#include "windows/system/registry.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace {

using namespace windows::com;
using platform::Arguments;
using platform::Value;

constexpr CLSID kClass{0x2b7ad0c6, 0x7a49, 0x4b0a, {0x9c, 0x6f, 0x0d, 0x5e, 0x5b, 0x83, 0x41, 0xe7}};
const std::wstring kClassKey = L"CLSID\\{2B7AD0C6-7A49-4B0A-9C6F-0D5E5B8341E7}",
                   kNameKey = L"Qm5r.TestControl";

windows::WindowsRegistry machine;
registry::CRegistry settings(machine, "test");
constexpr const char* kSettings = "SOFTWARE\\Qm5r.TestControl";

std::string Setting(const char* name) { return settings.MachineSetting(kSettings, name); }
bool Demands(const char* what) { return Setting("Demands").find(what) != std::string::npos; }
void Note(const char* what) { settings.SetMachineSetting(kSettings, "Ended", Setting("Ended") + what); }

/// Raises all events except errors on another thread and waits for it. Passes itself with updates.
class Server final : public automation::Published, public std::enable_shared_from_this<Server> {
 public:
  Server() {
    const auto sleep = [](auto time) { std::this_thread::sleep_for(time); };
    const std::string file = Setting("Network");
    const auto simulation = file.empty() ? simulator::Simulation::FromText("{\"networks\": []}", sleep)
                                         : simulator::Simulation::FromFile(windows::ToWide(file), sleep);
    server_ = simulation->CreateObjectServer();
  }
  std::optional<std::int32_t> MemberNumber(std::string_view name) const override {
    return server_->MemberNumber(name);
  }
  Value Invoke(const platform::Member& member, platform::CallKind kind, Arguments arguments) override {
    return server_->Invoke(member, kind, arguments);
  }
  std::unique_ptr<platform::Subscription> Advise(platform::EventHandler handler) override {
    return server_->Advise([this, handler](std::int32_t event, Arguments arguments) {
      if (event == simulator::kErrorEvent || !Demands("thread")) return handler(event, arguments);
      std::thread([&] {
        std::vector<Value> own(arguments.begin(), arguments.end());
        if (event == simulator::kUpdateEvent) own[2] = shared_from_this();
        handler(event, own);
        const Bstr where_the_text_was(std::string_view("gone"));
      }).join();
    });
  }

 private:
  std::shared_ptr<automation::Published> server_;
};

#define REFUSE(name, ...) \
  HRESULT STDMETHODCALLTYPE name(__VA_ARGS__) override { return E_NOTIMPL; }

class Control final : public Adapter<IDispatch, IPersistStreamInit, IOleObject> {
 public:
  Control() : Adapter(std::make_shared<Server>()) {
    // Keeps the apartment of the threads that raise events. The 32-bit import library lacks this call.
    const auto keep =
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ole32"), "CoIncrementMTAUsage"));
    void* cookie = nullptr;
    reinterpret_cast<HRESULT(WINAPI*)(void**)>(keep)(&cookie);
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** found) override {
    return SUCCEEDED(Adapter::QueryInterface(id, found)) ? S_OK : events_->QueryInterface(id, found);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID number, REFIID id, LCID language, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                                   UINT* bad_argument) override {
    const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    const bool named = parameters->cNamedArgs == 1 && *parameters->rgdispidNamedArgs == DISPID_PROPERTYPUT;
    if (Demands("basic") && (flags == DISPATCH_PROPERTYGET || put != named)) return DISP_E_MEMBERNOTFOUND;
    if ((Demands("init") && !initialised_) || (Demands("site") && !sited_)) return E_UNEXPECTED;
    return Adapter::Invoke(number, id, language, flags, parameters, result, info, bad_argument);
  }

  HRESULT STDMETHODCALLTYPE InitNew() override {
    initialised_ = sited_ || !Demands("first");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override {
    if (!site) return Note("unsited "), S_OK;
    const ComPtr<IOleClientSite> given(site);
    const auto surroundings = given.As<IDispatch>();
    Variant run_time;
    if (!given.As<IOleControlSite>() || !surroundings || !(initialised_ || Demands("first")) ||
        FAILED(surroundings->Invoke(DISPID_AMBIENT_USERMODE, IID_NULL, 0, DISPATCH_PROPERTYGET, nullptr,
                                    run_time.get(), nullptr, nullptr)))
      return E_UNEXPECTED;
    sited_ = FromVariant(*run_time.get()) == Value(true);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Close(DWORD) override { return Note("closed "), S_OK; }
  HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD, DWORD* traits) override {
    *traits = Demands("first") ? OLEMISC_SETCLIENTSITEFIRST : 0;
    return S_OK;
  }
  // clang-format off
  REFUSE(GetClassID, CLSID*) REFUSE(IsDirty) REFUSE(Load, IStream*) REFUSE(Save, IStream*, BOOL)
  REFUSE(GetSizeMax, ULARGE_INTEGER*) REFUSE(GetClientSite, IOleClientSite**) REFUSE(Update) REFUSE(IsUpToDate)
  REFUSE(SetHostNames, LPCOLESTR, LPCOLESTR) REFUSE(SetMoniker, DWORD, IMoniker*) REFUSE(EnumVerbs, IEnumOLEVERB**)
  REFUSE(GetMoniker, DWORD, DWORD, IMoniker**) REFUSE(InitFromData, IDataObject*, BOOL, DWORD)
  REFUSE(GetClipboardData, DWORD, IDataObject**) REFUSE(DoVerb, LONG, MSG*, IOleClientSite*, LONG, HWND, const RECT*)
  REFUSE(GetUserClassID, CLSID*) REFUSE(GetUserType, DWORD, LPOLESTR*) REFUSE(SetExtent, DWORD, SIZEL*)
  REFUSE(GetExtent, DWORD, SIZEL*) REFUSE(Advise, IAdviseSink*, DWORD*) REFUSE(Unadvise, DWORD)
  REFUSE(EnumAdvise, IEnumSTATDATA**) REFUSE(SetColorScheme, LOGPALETTE*);
  // clang-format on

 private:
  ~Control() override { Note("gone"); }

  const ComPtr<DispatchAdapter> events_ = Make<DispatchAdapter>(object(), AdapterTraits{kClass, {}});
  bool initialised_ = false, sited_ = false;
};

class Factory final : public Implements<IClassFactory2> {
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** made) override {
    return Demands("licence") ? CLASS_E_NOTLICENSED : Make<Control>()->QueryInterface(id, made);
  }
  HRESULT STDMETHODCALLTYPE CreateInstanceLic(IUnknown*, IUnknown*, REFIID id, BSTR key,
                                              void** made) override {
    return TextOf(key) == "key" ? Make<Control>()->QueryInterface(id, made) : CLASS_E_NOTLICENSED;
  }
  HRESULT STDMETHODCALLTYPE RequestLicKey(DWORD, BSTR* key) override {
    if (Demands("no key")) return CLASS_E_NOTLICENSED;
    *key = Bstr(std::string_view("key")).Detach();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetLicInfo(LICINFO* info) override {
    *info = {sizeof *info, !Demands("no key"), !Demands("licence")};
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
  void* Find(REFIID id) noexcept override {
    return id == __uuidof(IClassFactory) ? static_cast<IClassFactory*>(this) : Implements::Find(id);
  }
};

/// A key of the machine's classes; `text` becomes its default value.
std::wstring Class(const std::wstring& key, const wchar_t* text = nullptr) {
  const std::wstring path = L"Software\\Classes\\" + key;
  if (text) RegSetValueW(HKEY_LOCAL_MACHINE, path.c_str(), REG_SZ, text, 0);
  return path;
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID, REFIID id, void** factory) {
  return Make<Factory>()->QueryInterface(id, factory);
}
STDAPI DllCanUnloadNow() { return S_FALSE; }
STDAPI DllUnregisterServer() {
  for (const std::wstring& key : {kNameKey, kClassKey})
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, Class(key).c_str());
  settings.DeleteMachineKey(kSettings);
  return S_OK;
}
STDAPI DllRegisterServer() {
  DllUnregisterServer();
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(reinterpret_cast<HMODULE>(&__ImageBase), path, MAX_PATH);
  Class(kNameKey + L"\\CLSID", kClassKey.c_str() + 6);
  Class(kClassKey + L"\\InprocServer32", path);
  return S_OK;
}
