#pragma once

#include <memory>
#include <string>

#include "automation/published.h"
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

}  // namespace simulator
