#include "windows/com/dispatch_adapter.h"

#include <olectl.h>

#include "windows/com/failure.h"

namespace windows::com {

ComPtr<IDispatch> DispatchAdapter::For(const std::shared_ptr<automation::Published>& object,
                                       const AdapterTraits& traits) {
  if (auto open = FindAdapter(*object)) return open;
  return Make<DispatchAdapter>(object, traits);
}

DispatchAdapter::DispatchAdapter(std::shared_ptr<automation::Published> published,
                                 const AdapterTraits& traits)
    : Adapter(std::move(published), traits.type_info),
      events_(traits.events),
      point_(*this, *object(), events_.value_or(IID_NULL)) {}

void* DispatchAdapter::Find(REFIID id) noexcept {
  const bool about_events = id == __uuidof(IConnectionPointContainer) || id == __uuidof(IProvideClassInfo2);
  if (about_events && !events_) return nullptr;
  if (id == __uuidof(IProvideClassInfo) && events_) return static_cast<IProvideClassInfo2*>(this);
  return Adapter::Find(id);
}

HRESULT DispatchAdapter::EnumConnectionPoints(IEnumConnectionPoints** points) try {
  if (!points) return E_POINTER;
  *points = EnumerateOne(ComPtr<IConnectionPoint>(&point_)).Detach();
  return S_OK;
} catch (...) {
  return ReportAsResult();
}

HRESULT DispatchAdapter::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  *point = nullptr;
  if (id != events_) return CONNECT_E_NOCONNECTION;
  *point = ComPtr<IConnectionPoint>(&point_).Detach();
  return S_OK;
}

HRESULT DispatchAdapter::GetClassInfo(ITypeInfo** type_info) {
  if (!type_info) return E_POINTER;
  *type_info = nullptr;
  return E_NOTIMPL;
}

HRESULT DispatchAdapter::GetGUID(DWORD kind, GUID* id) {
  if (!id) return E_POINTER;
  *id = IID_NULL;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  *id = *events_;
  return S_OK;
}

}  // namespace windows::com
