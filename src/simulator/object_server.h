#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "simulator/object.h"

namespace simulator {

/// The root of a session. It has the numbers of the platform's control; its last reference closes what it
/// opened.
class ObjectServer : public Simulated<ObjectServer> {
 public:
  explicit ObjectServer(std::shared_ptr<ClientSession> session)
      : Simulated({std::move(session), nullptr, {"LcaObjectServer", "", ""}, ""}) {}

  static std::span<const MemberRow<ObjectServer>> Members();

  /// The knobs are reached whatever faults and latency are set, and leave no trace in the journal.
  Value Invoke(const platform::Member& member, platform::CallKind kind, Arguments arguments) override;

  std::unique_ptr<platform::Subscription> Advise(platform::EventHandler handler) override;

 private:
  Value Networks();
  Value Interfaces(const std::string& part);
  Value ActiveRemoteInterface();
  void SetActiveRemoteInterface(const Value& value);
  void SetFlags(const Value& value);
  Value Apps();
  Value Control();

  LateBoundPtr control_;
};

/// A root whose every member raises 17008 with the reason: what clients meet who have had COM start a
/// simulator that cannot use its network file.
std::shared_ptr<automation::Published> MakeUnusableServer(std::string reason);

/// Whether some object of the platform has a member of that name, in any letter case.
bool IsMember(std::string_view name);

}  // namespace simulator
