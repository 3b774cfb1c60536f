#pragma once

#include <windows.h>

#include <ocidl.h>

#include <map>
#include <memory>

#include "platform/late_bound.h"
#include "windows/com/owners.h"

namespace windows::com {

// COM's interfaces have no virtual destructor.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// Connects clients' sinks to the events of a published object. A part of its adapter, which counts its
/// references.
///
/// Every connection has its own subscription to the object. Events are delivered within the call that raises
/// them. A sink whose process has ended is dropped at the first event that it misses. Handlers may connect
/// and disconnect while the object raises an event.
class ConnectionPoint final : public IConnectionPoint {
 public:
  ConnectionPoint(IConnectionPointContainer& adapter, platform::LateBound& source, const IID& events)
      : adapter_(adapter), source_(source), events_(events) {}
  virtual ~ConnectionPoint() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** interface_pointer) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return adapter_.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return adapter_.Release(); }

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
  /// Not offered: the enumeration cannot be passed to another process.
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

 private:
  struct Connection {
    ComPtr<IDispatch> sink;
    std::unique_ptr<platform::Subscription> subscription;
  };
  static void Deliver(const std::shared_ptr<Connection>& connection, std::int32_t event,
                      platform::Arguments arguments);

  IConnectionPointContainer& adapter_;
  platform::LateBound& source_;
  const IID events_;
  std::map<DWORD, std::shared_ptr<Connection>> connections_;
  DWORD last_cookie_ = 0;
};

#pragma GCC diagnostic pop

/// The enumeration of an adapter's only connection point.
ComPtr<IEnumConnectionPoints> EnumerateOne(ComPtr<IConnectionPoint> point);

}  // namespace windows::com
