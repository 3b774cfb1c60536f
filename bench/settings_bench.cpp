// Compares reading and comparing the settings of a thousand thermostats with a bare client that only makes
// the same calls of the object server, which is the simulation in this process. Waiting for the network is
// added to the time, not waited for.

#include <benchmark/benchmark.h>

#include <sstream>

#include "headless/computer.h"
#include "qm5r/commands.h"
#include "recording.h"
#include "simulator/simulation.h"

namespace {

constexpr std::size_t kDevices = 1000;

/// A computer with the network, whose devices answer after a time that nobody waits for.
struct Hotel {
  explicit Hotel(std::int64_t read_milliseconds) {
    simulation->latency().read = static_cast<int>(read_milliseconds);
  }
  void Compare() {
    qm5r::Options options;
    options.command = qm5r::Command::Compare;
    options.places = {"Hotel/Hotel.Floor 1/Room 1", "Hotel"};
    std::ostringstream out;
    qm5r::Computer computer{[this] { return MakeServer(); },
                            files,
                            out,
                            out,
                            false,
                            "",
                            [] { return ""; },
                            [] { return ""; },
                            nullptr,
                            "",
                            nullptr,
                            [] { return 0.0; }};
    if (qm5r::Run(options, computer) != qm5r::kDone) std::abort();
  }
  platform::LateBoundPtr MakeServer() {
    auto server = simulation->CreateObjectServer();
    return recording ? recording->Watch(std::move(server)) : server;
  }

  std::chrono::milliseconds waited{};
  std::shared_ptr<simulator::Simulation> simulation = simulator::Simulation::FromFile(
      QM5R_HOTEL_NETWORK, [this](std::chrono::milliseconds time) { waited += time; });
  headless::MemoryFiles files;
  bench::Recording* recording = nullptr;
};

template <class Step>
void Measure(benchmark::State& state, Hotel& hotel, const Step& step) {
  double own = 0;
  for (auto _ : state) {
    hotel.waited = {};
    const auto start = std::chrono::steady_clock::now();
    step();
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    own += seconds;
    state.SetIterationTime(seconds + std::chrono::duration<double>(hotel.waited).count());
  }
  state.counters["us per device without waiting"] =
      own / static_cast<double>(state.iterations()) / kDevices * 1e6;
}

void Settings(benchmark::State& state) {
  Hotel hotel(state.range(0));
  Measure(state, hotel, [&] { hotel.Compare(); });
  hotel.simulation->journal().Clear();
  hotel.Compare();
  const auto& journal = hotel.simulation->journal();
  double values = 0, of_variables = 0, others = 0;
  for (std::size_t i = 0; i < journal.Count(); ++i) {
    const std::string& member = journal.At(i).operation.member;
    const bool is_variable = journal.At(i).operation.place.item.starts_with("nci");
    values += member == "Value";
    of_variables += is_variable && member != "Value";
    others += !is_variable;
  }
  state.counters["values per device"] = values / (kDevices + 1);
  state.counters["other calls per variable, with the look-up"] = of_variables / values + 1;
  state.counters["other calls per device"] = (others - values) / (kDevices + 1);
}

void BareClient(benchmark::State& state) {
  bench::Recording recording;
  Hotel hotel(state.range(0));
  hotel.recording = &recording;
  hotel.Compare();
  hotel.recording = nullptr;
  Measure(state, hotel, [&] {
    bench::Recording::Player(recording, hotel.simulation->CreateObjectServer()).Play(0, recording.size());
  });
}

void Latencies(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgName("ms per value")->Arg(0)->Arg(20)->Unit(benchmark::kMillisecond)->UseManualTime();
}
BENCHMARK(Settings)->Apply(Latencies);
BENCHMARK(BareClient)->Apply(Latencies)->Name("Settings, bare client");

}  // namespace
