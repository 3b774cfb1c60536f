#include "windows/com/connection_point.h"

#include <olectl.h>

#include <algorithm>
#include <array>

#include "windows/com/failure.h"
#include "windows/com/home_thread.h"
#include "windows/com/variant_conversion.h"

namespace windows::com {
namespace {

bool SinkIsGone(HRESULT result) {
  static const std::array gone{HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE),
                               HRESULT_FROM_WIN32(RPC_S_CALL_FAILED),
                               HRESULT_FROM_WIN32(RPC_S_CALL_FAILED_DNE),
                               RPC_E_DISCONNECTED,
                               RPC_E_SERVER_DIED,
                               RPC_E_SERVER_DIED_DNE,
                               CO_E_OBJNOTCONNECTED};
  return std::ranges::find(gone, result) != gone.end();
}

class OnePointEnumerator final : public Implements<IEnumConnectionPoints> {
 public:
  OnePointEnumerator(ComPtr<IConnectionPoint> point, bool passed)
      : point_(std::move(point)), passed_(passed) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG wanted, IConnectionPoint** points, ULONG* fetched) override {
    if (!points) return E_POINTER;
    const ULONG count = passed_ || wanted == 0 ? 0 : 1;
    if (count == 1) {
      points[0] = ComPtr<IConnectionPoint>(point_).Detach();
      passed_ = true;
    }
    if (fetched) *fetched = count;
    return count == wanted ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const ULONG left = passed_ ? 0 : 1;
    if (count > 0) passed_ = true;
    return count <= left ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    passed_ = false;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumConnectionPoints** copy) override try {
    if (!copy) return E_POINTER;
    *copy = Make<OnePointEnumerator>(point_, passed_).Detach();
    return S_OK;
  } catch (...) {
    return ReportAsResult();
  }

 private:
  ComPtr<IConnectionPoint> point_;
  bool passed_;
};

}  // namespace

HRESULT ConnectionPoint::QueryInterface(REFIID id, void** interface_pointer) {
  if (!interface_pointer) return E_POINTER;
  const bool known = id == __uuidof(IUnknown) || id == __uuidof(IConnectionPoint);
  *interface_pointer = known ? static_cast<IConnectionPoint*>(this) : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* id) {
  if (!id) return E_POINTER;
  *id = events_;
  return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (!container) return E_POINTER;
  *container = ComPtr<IConnectionPointContainer>(&adapter_).Detach();
  return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) try {
  if (!sink || !cookie) return E_POINTER;
  *cookie = 0;
  const ComPtr<IUnknown> unknown(sink);
  auto connection = std::make_shared<Connection>();
  // A sink in another process has the events' own interface only if its marshalling is registered; every sink
  // has IDispatch.
  connection->sink = unknown.As<IDispatch>(events_);
  if (!connection->sink) connection->sink = unknown.As<IDispatch>();
  if (!connection->sink) return CONNECT_E_CANNOTCONNECT;
  connection->subscription = source_.Advise(
      [connected = std::weak_ptr(connection)](std::int32_t event, platform::Arguments arguments) {
        Deliver(connected.lock(), event, arguments);
      });
  connections_.emplace(++last_cookie_, std::move(connection));
  *cookie = last_cookie_;
  return S_OK;
} catch (...) {
  return ReportAsResult();
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
  const auto found = connections_.find(cookie);
  if (found == connections_.end()) return CONNECT_E_NOCONNECTION;
  const std::shared_ptr<Connection> last = std::move(found->second);
  connections_.erase(found);
  last->sink.Reset();
  last->subscription.reset();
  return S_OK;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
  if (connections) *connections = nullptr;
  return E_NOTIMPL;
}

/// After the sink's answer, uses only its own copies: the sink may have disconnected itself or even released
/// the adapter.
void ConnectionPoint::Deliver(const std::shared_ptr<Connection>& connection, std::int32_t event,
                              platform::Arguments arguments) {
  if (!connection || !connection->sink) return;
  const ComPtr<IDispatch> sink = connection->sink;
  CallArguments call(arguments);
  DISPPARAMS parameters = call.Parameters(false);
  const HRESULT result = sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                      nullptr, nullptr, nullptr);
  // The source ignores other failures of the sink.
  if (!SinkIsGone(result)) return;
  connection->sink.Reset();
  connection->subscription.reset();
}

ComPtr<IEnumConnectionPoints> EnumerateOne(ComPtr<IConnectionPoint> point) {
  return Make<OnePointEnumerator>(std::move(point), false);
}

}  // namespace windows::com
