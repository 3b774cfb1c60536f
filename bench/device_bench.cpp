// Compares a configure command and the steps after it with a bare client that only makes the same calls of
// the object server. The object server is the simulation in this process, without latency, so this measures
// the plug-in's own time.

#include <benchmark/benchmark.h>

#include "director/configure.h"
#include "headless/plug_in.h"
#include "model/catalogue.h"
#include "recording.h"

namespace {

constexpr const char* kDevice = "Demo Tower/Demo Tower.Floor 1/Thermostat 101";

std::shared_ptr<simulator::Simulation> MakeNetwork() {
  auto network = simulator::Simulation::FromFile(QM5R_DEMO_NETWORK, [](std::chrono::milliseconds) {});
  network->installation().auto_save = false;
  return network;
}

/// A plug-in that has configured a device.
struct Sitting {
  Sitting() {
    director::ConfigureRequest request;
    request.path = kDevice;
    plug_in.registry.SetMachineSetting(plug_in.identity.PlugInKey(), "DisplayUnits", "0");
    plug_in.in_between = [this](platform::LateBoundPtr server) {
      return watched ? recording.Watch(std::move(server)) : server;
    };
    api = plug_in.CreateApi();
    director::Configure(*api, request);
  }
  void Configure() {
    const std::vector<platform::Value> arguments = {session::kConfigureCommand, session::kAppDeviceType,
                                                    std::string(kDevice)};
    api->Invoke({"SendCommand"}, platform::CallKind::Method, arguments);
  }
  void Edit(bool all, bool odd) {
    using Kind = ui::Control::Kind;
    for (const auto& row : model::Catalogue()) {
      ui::Control* control = plug_in.main.screen.Find(row.control);
      if (!control || (!all && row.name != "nciSndHrtBt")) continue;
      if (control->kind() == Kind::ChoiceList) {
        auto& list = static_cast<ui::ChoiceList&>(*control);
        list.UserChooses(list.Items().at(odd ? 1 : 0));
      } else if (row.limits && control->kind() == Kind::TextField) {
        static_cast<ui::TextField&>(*control).UserChangesText(odd ? "21" : "22");
      }
    }
  }

  static inline bool watched = false;
  bench::Recording recording;
  headless::PlugIn plug_in{MakeNetwork(), {1, 0, 0}};
  std::shared_ptr<plugin::LNSPlugInAPI> api;
};

using Step = void (*)(Sitting& sitting, bool odd);
void FirstFill(Sitting& sitting, bool) { sitting.Configure(); }
void Refresh(Sitting& sitting, bool) { sitting.plug_in.main.cmdRefresh.UserClicks(); }
void ApplyOne(Sitting& sitting, bool odd) {
  sitting.Edit(false, odd);
  sitting.plug_in.main.cmdApply.UserClicks();
}
void ApplyAll(Sitting& sitting, bool odd) {
  sitting.Edit(true, odd);
  sitting.plug_in.main.cmdApply.UserClicks();
}
void SwitchUnits(Sitting& sitting, bool odd) { sitting.plug_in.main.obUnits[odd].UserClicks(); }

void PlugIn(benchmark::State& state, Step step) {
  Sitting sitting;
  bool odd = false;
  for (auto _ : state) step(sitting, odd = !odd);
  state.counters["rows of the log"] = static_cast<double>(sitting.plug_in.log.lstActivity.Rows().size());
}

/// Only the step's calls, made by the player.
void BareClient(benchmark::State& state, Step step) {
  Sitting::watched = true;
  Sitting sitting;
  Sitting::watched = false;
  const std::size_t first = sitting.recording.size();
  step(sitting, true);
  const std::size_t middle = sitting.recording.size();
  step(sitting, false);
  const std::size_t last = sitting.recording.size();
  const auto network = MakeNetwork();
  bench::Recording::Player player(sitting.recording, network->CreateObjectServer());
  player.Play(0, first);
  bool odd = false;
  for (auto _ : state) (odd = !odd) ? player.Play(first, middle) : player.Play(middle, last);
  state.counters["calls"] = static_cast<double>(last - first) / 2;
}

#define BENCHMARK_STEP(step)                                            \
  BENCHMARK_CAPTURE(PlugIn, step, step)->Unit(benchmark::kMicrosecond); \
  BENCHMARK_CAPTURE(BareClient, step, step)->Unit(benchmark::kMicrosecond)

BENCHMARK_STEP(FirstFill);
BENCHMARK_STEP(Refresh);
BENCHMARK_STEP(ApplyOne);
BENCHMARK_STEP(ApplyAll);
BENCHMARK_STEP(SwitchUnits);

}  // namespace
