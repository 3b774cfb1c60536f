#pragma once

#include <memory>

#include "automation/published.h"
#include "simulator/simulation.h"

namespace simulator {

/// The knobs of the simulation at run time, reached as the root's member `Simulator`. None of its members is
/// journaled, delayed or made to fail.
class SimulatorControl : public automation::PublishedTable<SimulatorControl> {
 public:
  explicit SimulatorControl(std::shared_ptr<Simulation> simulation) : simulation_(std::move(simulation)) {}

  static std::span<const automation::MemberRow<SimulatorControl>> Members();

 private:
  platform::Value Entry(platform::Arguments arguments);
  int& LatencyOf(const platform::Value& kind);
  platform::Value SetLatency(platform::Arguments arguments);
  platform::Value AddFault(platform::Arguments arguments);
  platform::Value RaiseEvent(platform::Arguments arguments);
  platform::Value DoFile(void (Simulation::*operation)());

  std::shared_ptr<Simulation> simulation_;
};

}  // namespace simulator
