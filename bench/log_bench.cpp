// The time of one log entry in a log with many rows, and the memory of the rows.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "headless/computer.h"
#include "headless/desktop.h"
#include "log/log.h"

namespace {

std::size_t BytesInUse() {
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

void LogEntry(benchmark::State& state) {
  headless::Desktop desktop;
  const headless::BuiltInProgram program({1, 0, 0});
  headless::MemoryFiles files;
  activity::fLog log(desktop, program, files);
  const auto add = [&log] { log.LogCommand("Reading nciSetPts", "23,25,28,21,19,16"); };
  const std::size_t before = BytesInUse();
  for (std::int64_t row = 0; row < state.range(0); ++row) add();
  const auto held = static_cast<double>(BytesInUse() - before);
  state.counters["MB"] = held / 1e6;
  // Adds few rows compared with the existing ones.
  for (auto _ : state) add();
}
BENCHMARK(LogEntry)->Arg(10)->Arg(10'000)->Arg(1'000'000)->Iterations(2000);

}  // namespace
