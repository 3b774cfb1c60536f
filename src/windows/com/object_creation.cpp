#include "windows/com/object_creation.h"

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include "windows/com/failure.h"
#include "windows/com/hosted_control.h"
#include "windows/com/owners.h"
#include "windows/com/variant_conversion.h"

namespace windows::com {
namespace {

HRESULT CreateHere(const CLSID& class_id, ComPtr<IDispatch>& object) {
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

}  // namespace

/// What comes from another process is no control to host, and to ask it would be a call each time. It is not
/// looked for where this process has the class: COM might start one to hold the control.
platform::LateBoundPtr CreateObject(std::string_view prog_id) {
  const std::string attempt = "Cannot create the object \"" + std::string(prog_id) + "\"";
  CLSID class_id;
  Check(CLSIDFromProgID(ToWide(prog_id).c_str(), &class_id), attempt);
  ComPtr<IDispatch> object;
  const HRESULT here = CreateHere(class_id, object);
  if (here != REGDB_E_CLASSNOTREG) {
    Check(here, attempt);
    return std::make_shared<HostedControl>(std::move(object));
  }
  Check(CoCreateInstance(class_id, nullptr, CLSCTX_LOCAL_SERVER, __uuidof(IDispatch), object.ReceiveVoid()),
        attempt);
  return FromDispatch(object);
}

void AllowForeground(const platform::LateBound& object) {
  if (const auto* remote = dynamic_cast<const DispatchObject*>(&object))
    CoAllowSetForegroundWindow(remote->dispatch().get(), nullptr);
}

}  // namespace windows::com
