#pragma once

#include <windows.h>

#include <ocidl.h>

#include <memory>
#include <optional>

#include "windows/com/connection_point.h"
#include "windows/com/door.h"

namespace windows::com {

/// What a door shows beyond the members of its object.
struct DoorTraits {
  /// The source interface under which the object's events (LateBound::Advise) are offered.
  std::optional<IID> events = {};
  ComPtr<ITypeInfo> type_info = {};
};

/// The door of an object that is only called late-bound.
class DispatchDoor final : public Door<IDispatch, IConnectionPointContainer, IProvideClassInfo2> {
 public:
  /// The object's open door, of whatever kind; a new one where it has none.
  static ComPtr<IDispatch> For(const std::shared_ptr<automation::Published>& object,
                               const DoorTraits& traits = {});

  DispatchDoor(std::shared_ptr<automation::Published> object, const DoorTraits& traits);

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** type_info) override;
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override;

 protected:
  void* Find(REFIID id) noexcept override;

 private:
  /// Handlers that go with the door must not find it again.
  ~DispatchDoor() override { Hide(); }

  const std::optional<IID> events_;
  ConnectionPoint point_;
};

}  // namespace windows::com
