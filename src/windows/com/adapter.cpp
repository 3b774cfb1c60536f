#include "windows/com/adapter.h"

#include <unordered_map>
#include <utility>

namespace windows::com {
namespace {

struct Adapters {
  std::unordered_map<const automation::Published*, IDispatch*> by_object;
  std::unordered_map<const IDispatch*, LiveAdapter*> by_adapter;
};

/// Those of this thread. Never destroyed: where a process ends without leaving its apartment, COM closes the
/// last adapters.
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
  // An object that ends may ask whether any is used, and calls come in meanwhile.
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

}  // namespace windows::com
