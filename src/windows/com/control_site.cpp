#include "windows/com/control_site.h"

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

}  // namespace windows::com
