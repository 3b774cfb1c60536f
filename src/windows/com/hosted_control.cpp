#include "windows/com/hosted_control.h"

#include <olectl.h>

namespace windows::com {

HRESULT ControlSite::GetExtendedControl(IDispatch** control) { return None(control, E_NOTIMPL); }
HRESULT ControlSite::GetTypeInfo(UINT, LCID, ITypeInfo** type_info) { return None(type_info, E_NOTIMPL); }

HRESULT ControlSite::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT ControlSite::Invoke(DISPID ambient, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                            EXCEPINFO*, UINT*) {
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

namespace {

/// As newly made, not loaded.
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

}  // namespace

/// Refusals are harmless here; if the control needs something, its calls fail.
HostedControl::HostedControl(ComPtr<IDispatch> control)
    : DispatchObject(std::move(control)), object_(dispatch().As<IOleObject>()) {
  const bool site_first = object_ && WantsSiteFirst(*object_.get());
  if (!site_first) Initialise(dispatch());
  if (object_) object_->SetClientSite(Make<ControlSite>().get());
  if (site_first) Initialise(dispatch());
}

HostedControl::~HostedControl() {
  if (!object_) return;
  object_->Close(OLECLOSE_NOSAVE);
  object_->SetClientSite(nullptr);
}

}  // namespace windows::com
