#include "windows/com/dispatch_door.h"

#include <olectl.h>

#include "windows/com/failure.h"

namespace windows::com {

ComPtr<IDispatch> DispatchDoor::For(const std::shared_ptr<automation::Published>& object,
                                    const DoorTraits& traits) {
  if (auto open = FindDoor(*object)) return open;
  return Make<DispatchDoor>(object, traits);
}

DispatchDoor::DispatchDoor(std::shared_ptr<automation::Published> published, const DoorTraits& traits)
    : Door(std::move(published), traits.type_info),
      events_(traits.events),
      point_(*this, *object(), events_.value_or(IID_NULL)) {}

void* DispatchDoor::Find(REFIID id) noexcept {
  const bool about_events = id == __uuidof(IConnectionPointContainer) || id == __uuidof(IProvideClassInfo2);
  if (about_events && !events_) return nullptr;
  if (id == __uuidof(IProvideClassInfo) && events_) return static_cast<IProvideClassInfo2*>(this);
  return Door::Find(id);
}

HRESULT DispatchDoor::EnumConnectionPoints(IEnumConnectionPoints** points) try {
  if (!points) return E_POINTER;
  *points = EnumerateOne(ComPtr<IConnectionPoint>(&point_)).Detach();
  return S_OK;
} catch (...) {
  return ReportAsResult();
}

HRESULT DispatchDoor::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  *point = nullptr;
  if (id != events_) return CONNECT_E_NOCONNECTION;
  *point = ComPtr<IConnectionPoint>(&point_).Detach();
  return S_OK;
}

HRESULT DispatchDoor::GetClassInfo(ITypeInfo** type_info) {
  if (!type_info) return E_POINTER;
  *type_info = nullptr;
  return E_NOTIMPL;
}

HRESULT DispatchDoor::GetGUID(DWORD kind, GUID* id) {
  if (!id) return E_POINTER;
  *id = IID_NULL;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  *id = *events_;
  return S_OK;
}

}  // namespace windows::com
