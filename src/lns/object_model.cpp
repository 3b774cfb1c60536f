#include "lns/object_model.h"

#include <iterator>

namespace lns {
namespace {

using platform::CallKind;

constexpr std::int32_t kObjectVariableNotSet = 91;

/// The system's errors for an object whose process has ended: RPC_S_SERVER_UNAVAILABLE, RPC_S_CALL_FAILED,
/// RPC_S_CALL_FAILED_DNE, RPC_E_DISCONNECTED, RPC_E_SERVER_DIED, RPC_E_SERVER_DIED_DNE and
/// CO_E_OBJNOTCONNECTED.
constexpr std::uint32_t kLost[] = {0x800706BA, 0x800706BE, 0x800706BF, 0x80010108,
                                   0x80010007, 0x80010012, 0x800401FD};

constexpr const char* kDemonstration =
    " The object server may be in demonstration mode, as it is without a licence: a network then has at most "
    "four devices.";

}  // namespace

platform::LateBoundPtr Object::Target() const {
  if (!object_) throw platform::Error(kObjectVariableNotSet, "LNS", "Object variable not set");
  return object_;
}

Object::Result Object::Invoke(const platform::Member& member, CallKind kind,
                              platform::Arguments arguments) const {
  try {
    return Result(Target()->Invoke(member, kind, arguments));
  } catch (const platform::Error& error) {
    if (error.number() != platform::ObjectServerError(members::kFeatureNotAvailable)) throw;
    throw platform::Error(error.number(), error.source(), error.description() + kDemonstration);
  }
}

void Object::Put(const platform::Member& member, platform::Value value) const {
  const bool is_reference = std::holds_alternative<platform::LateBoundPtr>(value);
  Invoke(member, is_reference ? CallKind::PutReference : CallKind::Put, {&value, 1});
}

bool ObjectServer::IsLost() const {
  try {
    IsOpen();
    return false;
  } catch (const platform::Error& error) {
    return std::ranges::find(kLost, static_cast<std::uint32_t>(error.number())) != std::end(kLost);
  }
}

std::unique_ptr<platform::Subscription> ObjectServer::Advise(platform::EventHandler handler) const {
  return Target()->Advise(std::move(handler));
}

bool RepeatsDevices(std::string_view subsystem) {
  return subsystem == members::kAllDevices || subsystem == members::kDiscoveredDevices;
}

bool IsUnknownMember(const platform::Error& error) {
  return error.number() == platform::kUnknownName || error.number() == platform::kMemberNotFound;
}

AppDevice OwningDevice(const Object& object) {
  // Object, collection, interface, device: a longer walk leads elsewhere.
  constexpr int kMostSteps = 6;
  Object at = object;
  for (int step = 0; step < kMostSteps && at; ++step) {
    if (at.ClassId() == members::kClassAppDevice) return AppDevice(at.reference());
    at = at.Parent();
  }
  return {};
}

}  // namespace lns
