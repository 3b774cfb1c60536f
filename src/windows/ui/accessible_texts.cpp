#include "windows/ui/accessible_texts.h"

// The identifiers of the annotation service are made here, for this file alone.
#include <initguid.h>
#include <objbase.h>
#include <oleacc.h>

namespace windows {
namespace {

// PROPID_ACC_NAME and PROPID_ACC_DESCRIPTION of the system.
constexpr GUID kName{0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};
constexpr GUID kDescription{0x4d48dfe4, 0xbd3f, 0x491f, {0xa6, 0x48, 0x49, 0x2d, 0x6f, 0x20, 0xc5, 0x88}};

void Annotate(IAccPropServices* services, HWND control, const GUID& property, const std::wstring& text) {
  if (services)
    services->SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, property, text.c_str());
}

}  // namespace

AccessibleTexts::AccessibleTexts() {
  CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                   services_.ReceiveVoid());
}

AccessibleTexts::~AccessibleTexts() = default;

void AccessibleTexts::SetName(HWND control, const std::wstring& name) const {
  Annotate(services_.get(), control, kName, name);
}

void AccessibleTexts::SetDescription(HWND control, const std::wstring& description) const {
  Annotate(services_.get(), control, kDescription, description);
}

}  // namespace windows
