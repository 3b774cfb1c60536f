// Removes the plug-in's commands from many networks in turn.

#include <benchmark/benchmark.h>

#include "headless/plug_in.h"
#include "registration/command_removal.h"

namespace {

constexpr const char* kCommand = R"({"name": "Korvell QM5R-FC PIR Configure",
    "server": "QM5RFcPirConfigure.LNSPlugInAPI", "classId": 7, "commandId": 13})";

std::shared_ptr<simulator::Simulation> Networks(std::int64_t count) {
  std::string text = R"({"interfaces": [{"name": "NI"}], "networks": [)";
  for (std::int64_t i = 0; i < count; ++i)
    text += std::string(i ? "," : "") + R"({"name": "N)" + std::to_string(i) +
            R"(", "system": {"interface": "NI", "templates": [{"name": "T", "programId": "8000D3550004041D",
            "componentApps": [)" +
            kCommand + R"(]}], "componentApps": [)" + kCommand + R"(],
            "subsystems": [{"name": "F", "devices": [{"name": "D", "template": "T"}]}]}})";
  return simulator::Simulation::FromText(text + "]}", [](std::chrono::milliseconds) {});
}

void RemoveFromNetworks(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    auto plug_in =
        std::make_unique<headless::PlugIn>(Networks(state.range(0)), platform::Program::Version{1, 0, 0});
    plug_in->session.SupportedCommands = session::MakeSupportedCommands(plug_in->program);
    state.ResumeTiming();
    registration::RemovePlugInFromNetworks(plug_in->services, false, [&] { return plug_in->main.lcaOS(); });
    state.PauseTiming();
    for (const auto& network : plug_in->simulation->installation().networks)
      if (!network.system.component_apps.empty()) state.SkipWithError("a command is left");
    plug_in.reset();
    state.ResumeTiming();
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(RemoveFromNetworks)
    ->Arg(10)
    ->Arg(100)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

}  // namespace
