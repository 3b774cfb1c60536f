// Compares the real plug-in, in its own process and reached over COM, with a bare client that makes the same
// calls of the same object server. Each run measures both in turn.
//
//   plug_in_bench passes <rounds> <latency in ms>   first fill, refresh, units, apply
//   plug_in_bench start <rounds>                   from creation to the first answer of a server that runs,
//                                                  beside an empty one
//   plug_in_bench memory                           peak with a device loaded, beside an empty window
//   plug_in_bench soak <rounds>                    create, configure, release, again and again

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "director/configure.h"
#include "director/simulator_knobs.h"
#include "headless/plug_in.h"
#include "plug_in_process.h"
#include "recording.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/local_server.h"

namespace {

using Clock = std::chrono::steady_clock;
using platform::LateBoundPtr;

constexpr const char* kPlugIn = "QM5RFcPirConfigure.LNSPlugInAPI";
constexpr const char* kSimulator = "LnsSimulator.LcaObjectServer";
constexpr const wchar_t* kEmptyWindow = L"QM5REmptyWindow";
constexpr const char* kDevice = "Demo Tower/Demo Tower.Floor 1/Thermostat 101";

double Milliseconds(const std::function<void()>& step) {
  const auto start = Clock::now();
  step();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double Median(std::vector<double> times) {
  std::ranges::sort(times);
  return times.at(times.size() / 2);
}

void Send(platform::LateBound& api) {
  const std::vector<platform::Value> arguments = {session::kConfigureCommand, session::kAppDeviceType,
                                                  std::string(kDevice)};
  api.Invoke({"SendCommand"}, platform::CallKind::Method, arguments);
}

/// The calls of each step, recorded from the plug-in's code in this process.
class Script {
 public:
  Script() {
    plug_in_.in_between = [this](const LateBoundPtr&) {
      return recording_.Watch(windows::com::CreateObject(kSimulator));
    };
    // As on the plug-in's computer.
    plug_in_.files.Write("C:\\LonWorks\\Types\\User\\Korvell\\QM5R.typ", "");
    plug_in_.files.Write("C:\\LonWorks\\Types\\User\\Korvell\\QM5R.fmt", "");
    plug_in_.registry.SetMachineSetting("SOFTWARE\\LonWorks", "LonWorks Path", "C:\\LonWorks");
    api_ = plug_in_.CreateApi();
    director::ConfigureRequest request;
    request.path = kDevice;
    director::Configure(*api_, request);
  }

  struct Part {
    std::size_t first = 0, last = 0;
  };
  Part Record(const std::function<void(plugin::fMain& main, plugin::LNSPlugInAPI& api)>& step) {
    const std::size_t first = recording_.size();
    step(plug_in_.main, *api_);
    return {first, recording_.size()};
  }

  bench::Recording recording_;

 private:
  // This simulation is not used: the plug-in gets the one in the other process.
  headless::PlugIn plug_in_{
      simulator::Simulation::FromText(R"({"networks": []})", [](std::chrono::milliseconds) {}), {1, 0, 0}};
  std::shared_ptr<plugin::LNSPlugInAPI> api_;
};

/// Fields of four variables: the heartbeat and the throttle, which no rule affects, the actuator timing and a
/// humidity.
constexpr int kEdited[] = {39, 40, 14, 8};

/// The position of txtNvi(index) among the screen's text fields.
std::size_t PlaceOf(int index) {
  std::size_t place = 0;
  for (const auto& frame : model::Frames())
    for (const auto& field : frame.fields) {
      if (field.control == model::txtNvi(index)) return place;
      if (field.control.array != model::ScreenArray::cbNvi) ++place;
    }
  throw std::out_of_range("no such field");
}

struct Step {
  const char* name;
  std::function<void(platform::LateBound& api, const bench::PlugInProcess& process, bool odd)> prepare;
  std::function<void(platform::LateBound& api, const bench::PlugInProcess& process, bool odd)> run;
  std::function<void(plugin::fMain& main, plugin::LNSPlugInAPI& api)> record;
};

std::vector<Step> Steps() {
  using Api = platform::LateBound;
  using Process = bench::PlugInProcess;
  const auto nothing = [](Api&, const Process&, bool) {};
  const auto type = [](std::size_t fields) {
    return [fields](Api&, const Process& process, bool odd) {
      for (std::size_t i = 0; i < fields; ++i) process.Type(PlaceOf(kEdited[i]), odd ? L"7" : L"8");
    };
  };
  const auto press_apply = [](Api&, const Process& process, bool) { process.Press(L"&Apply"); };
  const auto record_apply = [](std::size_t fields) {
    return [fields](plugin::fMain& main, plugin::LNSPlugInAPI&) {
      for (std::size_t i = 0; i < fields; ++i) main.screen.txtNvi(kEdited[i])->UserChangesText("7");
      main.cmdApply.UserClicks();
    };
  };
  return {{"first fill", nothing, [](Api& api, const Process&, bool) { Send(api); },
           [](plugin::fMain&, plugin::LNSPlugInAPI& api) { Send(api); }},
          {"refresh", nothing, [](Api&, const Process& process, bool) { process.Press(L"&Refresh All"); },
           [](plugin::fMain& main, plugin::LNSPlugInAPI&) { main.cmdRefresh.UserClicks(); }},
          {"apply of one field", type(1), press_apply, record_apply(1)},
          {"apply of four", type(4), press_apply, record_apply(4)},
          {"switch of units", nothing,
           [](Api&, const Process& process, bool odd) { process.Press(odd ? L"&Metric" : L"&Imperial"); },
           [](plugin::fMain& main, plugin::LNSPlugInAPI&) {
             main.obUnits[main.obUnits[0].Selected() ? 1 : 0].UserClicks();
           }}};
}

int Passes(int rounds, int latency) {
  Script script;
  std::vector<Script::Part> parts;
  for (const Step& step : Steps()) parts.push_back(script.Record(step.record));

  const LateBoundPtr simulator = windows::com::CreateObject(kSimulator);
  const LateBoundPtr api = windows::com::CreateObject(kPlugIn);
  director::ConfigureRequest request;
  request.path = kDevice;
  director::Configure(*api, request);
  const bench::PlugInProcess process;
  bench::Recording::Player player(script.recording_, windows::com::CreateObject(kSimulator));
  player.Play(0, parts.front().first);

  director::SimulatorKnobs knobs(simulator);
  const auto calls_of = [&knobs](const std::function<void()>& step) {
    knobs.ClearJournal();
    step();
    return std::ranges::count(knobs.Journal(), '\n');
  };
  std::printf("%-20s %16s %12s %15s %7s   (median of %d, latency %d ms a call)\n", "", "calls of each",
              "plug-in ms", "bare client ms", "ratio", rounds, latency);
  const auto steps = Steps();
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const auto run = [&](bool odd) { steps[i].run(*api, process, odd); };
    const auto play = [&] { player.Play(parts[i].first, parts[i].last); };
    // Once to fill the caches, in any units, and once to count the calls.
    knobs.SetLatency("any", 0);
    steps[i].prepare(*api, process, true);
    run(true);
    steps[i].prepare(*api, process, false);
    const auto calls = calls_of([&] { run(false); }), played = calls_of(play);
    knobs.SetLatency("any", latency);
    std::vector<double> plug_in, bare;
    for (int round = 0; round < rounds; ++round) {
      const bool odd = round % 2 == 0;
      steps[i].prepare(*api, process, odd);
      plug_in.push_back(Milliseconds([&] { run(odd); }));
      bare.push_back(Milliseconds(play));
    }
    std::printf("%-20s %8td %7td %12.2f %15.2f %7.2f\n", steps[i].name, calls, played, Median(plug_in),
                Median(bare), Median(plug_in) / Median(bare));
    std::fflush(stdout);
  }
  knobs.SetLatency("any", 0);
  return 0;
}

struct FirstAnswer {
  double time = 0, processor_time = 0;  // milliseconds
};

/// The first answer of a running server, as Wine takes a second or two to find one that is just starting.
FirstAnswer AskFirst(const char* prog_id, const wchar_t* program) {
  const bench::StartedProgram server(program, L"-Embedding");
  Sleep(1500);  // until it offers its class
  const double before = server.ProcessorTime();
  FirstAnswer answer;
  answer.time = Milliseconds(
      [&] { windows::com::CreateObject(prog_id)->Invoke({"Version"}, platform::CallKind::Get, {}); });
  answer.processor_time = server.ProcessorTime() - before;
  Sleep(3000);  // until the server has ended
  return answer;
}

int Start(int rounds) {
  const LateBoundPtr simulator = windows::com::CreateObject(kSimulator);  // the plug-in's object server is up
  for (const auto& [prog_id, program] :
       {std::pair{kPlugIn, L"QM5RFcPirConfigure.exe"}, std::pair{"QM5RBench.Empty", L"empty_server.exe"}}) {
    std::vector<double> times, processor_times;
    for (int round = 0; round < rounds; ++round) {
      const FirstAnswer answer = AskFirst(prog_id, program);
      times.push_back(answer.time);
      processor_times.push_back(answer.processor_time);
    }
    std::printf("first answer of %-34s %6.1f ms, processor %6.1f ms, slowest %6.1f ms (median of %d)\n",
                prog_id, Median(times), Median(processor_times), std::ranges::max(times), rounds);
    std::fflush(stdout);
  }
  return 0;
}

int Memory() {
  const LateBoundPtr api = windows::com::CreateObject(kPlugIn);
  director::ConfigureRequest request;
  request.path = kDevice;
  director::Configure(*api, request);
  RECT place;
  GetWindowRect(FindWindowW(L"FormSurface", L"Korvell QM5R-FC PIR Configure"), &place);
  const auto width = static_cast<int>(place.right - place.left);
  const auto height = static_cast<int>(place.bottom - place.top);
  const LateBoundPtr server = windows::com::CreateObject("QM5RBench.Empty");
  server->Invoke({"ShowWindow"}, platform::CallKind::Method, std::vector<platform::Value>{width, height});
  DWORD with_server = 0;
  GetWindowThreadProcessId(FindWindowW(kEmptyWindow, nullptr), &with_server);
  const bench::StartedProgram window(L"empty_server.exe",
                                     L"/window " + std::to_wstring(width) + L" " + std::to_wstring(height));
  Sleep(2000);
  const auto peak = [](DWORD process) {
    return static_cast<double>(bench::HoldingsOf(process).peak_working_set) / 1e6;
  };
  const double plug_in = peak(bench::PlugInProcess().id());
  std::printf("peak memory: plug-in %.1f MB\n", plug_in);
  std::printf("  empty window of a server that holds the object server %.1f MB, ratio %.2f\n",
              peak(with_server), plug_in / peak(with_server));
  std::printf("  empty window of a program without automation %.1f MB, ratio %.2f\n", peak(window.id()),
              plug_in / peak(window.id()));
  PostThreadMessageW(window.thread(), WM_CLOSE, 0, 0);
  return 0;
}

int Soak(int rounds) {
  const LateBoundPtr stays = windows::com::CreateObject(kPlugIn);
  director::ConfigureRequest request;
  request.path = kDevice;
  director::Configure(*stays, request);
  const bench::PlugInProcess process;
  std::printf("%8s %9s %9s %9s %9s %9s\n", "rounds", "log rows", "handles", "GDI", "windows", "MB");
  bench::Holdings first;
  for (int round = 1; round <= rounds; ++round) {
    const LateBoundPtr api = windows::com::CreateObject(kPlugIn);
    director::Configure(*api, request);
    if (round % std::max(1, rounds / 10) != 0) continue;
    const bench::Holdings now = bench::HoldingsOf(process.id());
    if (first.handles == 0) first = now;
    std::printf("%8d %9d %9zu %9zu %9zu %9.1f\n", round, (round + 1) * 11, now.handles, now.gdi_objects,
                now.windows, static_cast<double>(now.working_set) / 1e6);
    std::fflush(stdout);
  }
  const bench::Holdings last = bench::HoldingsOf(process.id());
  const bool flat = last.handles <= first.handles + 5 && last.gdi_objects <= first.gdi_objects + 5 &&
                    last.windows <= first.windows + 5;
  std::printf("%s\n", flat ? "flat" : "NOT FLAT");
  return flat ? 0 : 1;
}

int Run(const std::vector<std::wstring>& words) {
  const auto number = [&](std::size_t at) { return at < words.size() ? std::stoi(words[at]) : 0; };
  if (words.empty()) return 2;
  if (words[0] == L"passes") return Passes(number(1), number(2));
  if (words[0] == L"start") return Start(number(1));
  if (words[0] == L"memory") return Memory();
  if (words[0] == L"soak") return Soak(number(1));
  return 2;
}

}  // namespace

int wmain(int count, wchar_t** words) {
  try {
    const windows::com::Apartment apartment;
    return Run({words + 1, words + count});
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "plug_in_bench: %s\n", failure.what());
    return 1;
  }
}
