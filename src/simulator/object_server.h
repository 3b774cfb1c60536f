#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "simulator/object.h"

namespace simulator {

/// The root of a session, with the member numbers of the platform's control.
class ObjectServer : public Simulated<ObjectServer> {
 public:
  explicit ObjectServer(std::shared_ptr<ClientSession> session)
      : Simulated({std::move(session), nullptr, {"LcaObjectServer", "", ""}, ""}) {}

  static std::span<const MemberRow<ObjectServer>> Members();

  /// Faults, latency and the journal do not apply to the knobs.
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

/// A root whose members all throw 17008 with the reason: for clients of a simulator that COM started with an
/// unusable network file.
std::shared_ptr<automation::Published> MakeUnusableServer(std::string reason);

/// Some object of the platform has a member of that name, in any letter case.
bool IsMember(std::string_view name);

}  // namespace simulator
