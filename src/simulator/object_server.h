#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "automation/published.h"
#include "simulator/object.h"
#include "simulator/simulation.h"

namespace simulator {

/// The knobs of the simulation at run time: the root's member `Simulator`. Its members are never journaled or
/// delayed and never fail.
class SimulatorControl : public automation::PublishedTable<SimulatorControl> {
 public:
  explicit SimulatorControl(std::shared_ptr<Simulation> simulation) : simulation_(std::move(simulation)) {}

  static std::span<const automation::MemberRow<SimulatorControl>> Members();

 private:
  std::string Entry(platform::Arguments arguments);
  int& LatencyOf(platform::Arguments arguments);
  void SetLatency(platform::Arguments arguments);
  void AddFault(platform::Arguments arguments);
  void RaiseEvent(platform::Arguments arguments);
  void DoFile(void (Simulation::*operation)());

  std::shared_ptr<Simulation> simulation_;
};

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

/// A root whose members all throw 17008 with the reason, for clients of a simulator that COM started with an
/// unusable network file.
std::shared_ptr<automation::Published> MakeUnusableServer(std::string reason);

/// An object of the platform has a member of that name, in any letter case.
bool IsMember(std::string_view name);

}  // namespace simulator
