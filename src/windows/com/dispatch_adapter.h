#pragma once

#include <windows.h>

#include <ocidl.h>

#include <memory>
#include <optional>

#include "windows/com/adapter.h"
#include "windows/com/connection_point.h"

namespace windows::com {

/// What an adapter shows beyond the members of its object.
struct AdapterTraits {
  /// The source interface under which the object's events (LateBound::Advise) are offered.
  std::optional<IID> events = {};
  ComPtr<ITypeInfo> type_info = {};
};

/// The adapter of an object that is only called late-bound.
class DispatchAdapter final : public Adapter<IDispatch, IConnectionPointContainer, IProvideClassInfo2> {
 public:
  /// The object's adapter, of whatever kind; a new one where it has none.
  static ComPtr<IDispatch> For(const std::shared_ptr<automation::Published>& object,
                               const AdapterTraits& traits = {});

  DispatchAdapter(std::shared_ptr<automation::Published> object, const AdapterTraits& traits);

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** type_info) override;
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override;

 protected:
  void* Find(REFIID id) noexcept override;

 private:
  /// Handlers that go with the adapter must not find it again.
  ~DispatchAdapter() override { Unlist(); }

  const std::optional<IID> events_;
  ConnectionPoint point_;
};

}  // namespace windows::com
