#include "windows/ui/accessible_name.h"

// The identifiers of the annotation service are made here, for this file alone.
#include <initguid.h>
#include <objbase.h>
#include <oleacc.h>

#include "windows/com/com_ptr.h"

namespace windows {
namespace {

// PROPID_ACC_NAME of the system.
constexpr GUID kNameProperty{0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};

}  // namespace

void SetAccessibleName(HWND control, const std::wstring& name) {
  com::ComPtr<IAccPropServices> services;
  if (SUCCEEDED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                                 services.ReceiveVoid())))
    services->SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, kNameProperty,
                             name.c_str());
}

}  // namespace windows
