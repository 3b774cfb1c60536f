#include "windows/com/server_use.h"

#include <atomic>
#include <utility>

namespace windows::com {
namespace {

std::atomic<long> uses = 0;

std::function<void()>& UnusedHandler() {
  static std::function<void()> handler;
  return handler;
}

}  // namespace

ServerUse::ServerUse() { ++uses; }

ServerUse::~ServerUse() {
  if (--uses == 0 && UnusedHandler()) UnusedHandler()();
}

long ServerUse::count() { return uses; }

void ServerUse::WhenUnused(std::function<void()> notify) { UnusedHandler() = std::move(notify); }

}  // namespace windows::com
