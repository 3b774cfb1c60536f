#pragma once

#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>

#include <memory>
#include <optional>

#include "automation/published.h"
#include "windows/com/connection_point.h"
#include "windows/com/home_thread.h"
#include "windows/com/owners.h"

namespace windows::com {

// IDispatch for a published object. These calls never throw.

/// IDispatch::GetIDsOfNames. Finds only the first name, as members have no named parameters.
HRESULT FindNumbers(const automation::Published& object, LPOLESTR* names, UINT count,
                    DISPID* numbers) noexcept;

/// IDispatch::Invoke.
HRESULT CallPublished(const std::shared_ptr<automation::Published>& object, DISPID number, REFIID id,
                      WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                      UINT* bad_argument) noexcept;

/// One of this thread's live adapters. An object has at most one, so that clients see one identity. An
/// adapter that returns as an argument is recognised by its address, because COM passes it into its own
/// apartment without a proxy.
class LiveAdapter {
 public:
  LiveAdapter(std::shared_ptr<automation::Published> object, IDispatch* adapter);
  LiveAdapter(const LiveAdapter&) = delete;
  LiveAdapter& operator=(const LiveAdapter&) = delete;
  ~LiveAdapter() { Disconnect(); }

  const std::shared_ptr<automation::Published>& object() const { return object_; }

  /// Removes the adapter from the list, before it ends.
  void Unlist() noexcept;
  /// Releases the object, which then no longer counts as used and ends if nobody else owns it.
  void Disconnect() noexcept;

 private:
  std::shared_ptr<automation::Published> object_;
  IDispatch* adapter_;
  std::optional<ServerUse> use_{std::in_place};
};

/// When the apartment is left: disconnects the adapters that clients still hold but can no longer call.
void DisconnectAllAdapters() noexcept;

/// The adapter of an object; null if it has none.
ComPtr<IDispatch> FindAdapter(const automation::Published& object);

/// The object behind an adapter of this process; null for any other IDispatch.
std::shared_ptr<automation::Published> PublishedBehind(const IDispatch* adapter);

/// IDispatch over a published object. `Interface` is IDispatch or a dual interface derived from it. The
/// adapter owns its object: if nobody else does, the last client's release ends the object.
template <class Interface, class... More>
class Adapter : public Implements<Interface, More...> {
 public:
  /// `type_info` describes the members to clients; may be null.
  explicit Adapter(std::shared_ptr<automation::Published> object, ComPtr<ITypeInfo> type_info = {})
      : type_info_(std::move(type_info)), live_(std::move(object), static_cast<Interface*>(this)) {}

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = type_info_ ? 1 : 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** type_info) override {
    if (!type_info) return E_POINTER;
    *type_info = nullptr;
    if (!type_info_) return E_NOTIMPL;
    if (index != 0) return DISP_E_BADINDEX;
    *type_info = ComPtr<ITypeInfo>(type_info_).Detach();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* numbers) override {
    return FindNumbers(*object(), names, count, numbers);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID number, REFIID id, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* info, UINT* bad_argument) override {
    return CallPublished(object(), number, id, flags, parameters, result, info, bad_argument);
  }

 protected:
  void* Find(REFIID id) noexcept override {
    if (id == __uuidof(IDispatch)) return static_cast<IDispatch*>(static_cast<Interface*>(this));
    return Implements<Interface, More...>::Find(id);
  }

  const std::shared_ptr<automation::Published>& object() const { return live_.object(); }
  const ComPtr<ITypeInfo>& type_info() const { return type_info_; }
  void Unlist() noexcept { live_.Unlist(); }

 private:
  ComPtr<ITypeInfo> type_info_;
  LiveAdapter live_;
};

/// What an adapter offers beyond its object's members.
struct AdapterTraits {
  /// The source interface for the object's events (LateBound::Advise).
  std::optional<IID> events = {};
  ComPtr<ITypeInfo> type_info = {};
};

/// The adapter of an object without a dual interface.
class DispatchAdapter final : public Adapter<IDispatch, IConnectionPointContainer, IProvideClassInfo2> {
 public:
  /// The object's adapter, of any kind; a new one if it has none.
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
  /// Handlers that end with the adapter must not find it.
  ~DispatchAdapter() override { Unlist(); }

  const std::optional<IID> events_;
  ConnectionPoint point_;
};

}  // namespace windows::com
