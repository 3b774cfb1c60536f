#include "windows/com/adapter.h"

#include <olectl.h>

#include <unordered_map>
#include <utility>

#include "windows/com/failure.h"

namespace windows::com {
namespace {

struct Adapters {
  std::unordered_map<const automation::Published*, IDispatch*> by_object;
  std::unordered_map<const IDispatch*, LiveAdapter*> by_adapter;
};

/// This thread's adapters. Never destroyed: if a process ends without leaving its apartment, COM closes the
/// last of them.
Adapters& AllAdapters() {
  thread_local Adapters& adapters = *new Adapters;
  return adapters;
}

}  // namespace

LiveAdapter::LiveAdapter(std::shared_ptr<automation::Published> object, IDispatch* adapter)
    : object_(std::move(object)), adapter_(adapter) {
  AllAdapters().by_object.emplace(object_.get(), adapter_);
  AllAdapters().by_adapter.emplace(adapter_, this);
}

void LiveAdapter::Unlist() noexcept {
  if (AllAdapters().by_adapter.erase(adapter_) != 0) AllAdapters().by_object.erase(object_.get());
}

void LiveAdapter::Disconnect() noexcept {
  Unlist();
  // An object that ends may check the uses, and calls may arrive meanwhile.
  use_.reset();
  std::exchange(object_, nullptr).reset();
}

void DisconnectAllAdapters() noexcept {
  while (!AllAdapters().by_adapter.empty()) AllAdapters().by_adapter.begin()->second->Disconnect();
}

ComPtr<IDispatch> FindAdapter(const automation::Published& object) {
  const auto found = AllAdapters().by_object.find(&object);
  return found == AllAdapters().by_object.end() ? nullptr : ComPtr<IDispatch>(found->second);
}

std::shared_ptr<automation::Published> PublishedBehind(const IDispatch* adapter) {
  const auto found = AllAdapters().by_adapter.find(adapter);
  return found == AllAdapters().by_adapter.end() ? nullptr : found->second->object();
}

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
