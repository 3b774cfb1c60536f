#include "qm5r/plan_commands.h"

#include <algorithm>
#include <map>
#include <ostream>

#include "qm5r/commands.h"
#include "qm5r/output.h"
#include "qm5r/progress.h"
#include "qm5r/sources.h"
#include "rollout/run.h"
#include "settings/file_names.h"
#include "text/csv.h"
#include "text/strings.h"

namespace qm5r {
namespace {

using rollout::DevicePlan;
using rollout::State;

bool IsPlanFile(std::string_view place) { return text::EndsWithIgnoringCase(place, rollout::kPlanExtension); }

std::string LineOf(std::string_view name, const std::string& text) {
  constexpr std::size_t kWidth = 26;
  std::string line = "  " + std::string(name);
  line.resize(std::max(line.size() + 2, kWidth), ' ');
  return line + text + '\n';
}

/// Nobody expects calibrations to be taken from another device.
std::string LeftOutLines(const DevicePlan& device) {
  std::string lines;
  for (const rollout::LeftOut& left_out : device.left_out)
    if (!left_out.field->is_calibration)
      lines += LineOf(left_out.field->name(), "left out: " + left_out.reason);
  return lines;
}

std::string LinesOf(const DevicePlan& device) {
  std::string lines = device.path + '\n';
  if (!device.problem.empty()) return lines + LineOf("left alone", device.problem);
  for (const rollout::Change& change : device.changes)
    lines += LineOf(change.field->name(), ValueText(*change.field, change.before) + " -> " +
                                              ValueText(*change.field, change.after));
  return lines + LeftOutLines(device);
}

std::string CountOf(std::size_t count, const std::string& thing) {
  return std::to_string(count) + ' ' + thing + (count == 1 ? "" : "s");
}

/// "9 devices: 5 to change (12 values), 2 same, 2 left alone"
std::string SummaryOf(const rollout::Plan& plan) {
  std::size_t change = 0, values = 0, same = 0, alone = 0, incomplete = 0;
  for (const DevicePlan& device : plan.devices) {
    values += device.changes.size();
    change += !device.changes.empty();
    alone += !device.problem.empty();
    same += device.problem.empty() && device.changes.empty();
    incomplete += device.problem.empty() && !device.IsComplete();
  }
  std::string text = CountOf(plan.devices.size(), "device") + ": " + std::to_string(change) + " to change (" +
                     CountOf(values, "value") + "), " + std::to_string(same) + " same, " +
                     std::to_string(alone) + " left alone";
  if (incomplete != 0) text += "; of " + std::to_string(incomplete) + " some fields are left out";
  return text;
}

Json PlanJson(const DevicePlan& device) {
  Json json = {{"path", device.path}, {"neuronId", device.neuron_id}, {"same", device.same}};
  if (!device.problem.empty()) json["problem"] = device.problem;
  Json& changes = json["changes"] = Json::array();
  for (const rollout::Change& change : device.changes)
    changes.push_back({{"field", change.field->name()}, {"before", change.before}, {"after", change.after}});
  Json& left_out = json["leftOut"] = Json::array();
  for (const rollout::LeftOut& each : device.left_out)
    left_out.push_back({{"field", each.field->name()}, {"reason", each.reason}});
  return json;
}

settings::DeviceSettings StandardOf(Sources& sources, const std::string& file) {
  std::vector<Source> found;
  sources.ForEach(file, [&](Source source) { found.push_back(std::move(source)); });
  if (found.size() != 1) throw Failed(file + " names " + std::to_string(found.size()) + " files, not one");
  return std::move(found.front().device.settings);
}

/// The file of each path of a snapshot.
std::map<std::string, std::string> FilesOfSnapshot(const Computer& computer, const std::string& folder) {
  constexpr std::size_t kLargestIndex = 1 << 26;
  const std::string above = folder + computer.files.Separator();
  const auto rows =
      text::CsvRows(computer.files.ReadStart(above + settings::FileNames::kIndex, kLargestIndex));
  if (rows.empty()) throw Failed("there is no snapshot in " + folder);
  std::map<std::string, std::string> files;
  for (std::size_t i = 1; i < rows.size(); ++i)
    if (rows[i].size() > 1 && !rows[i][1].empty()) files[rows[i][0]] = above + rows[i][1];
  return files;
}

rollout::Plan Read(const Options& options, Computer& computer, Sources& sources) {
  rollout::Plan plan;
  plan.made = computer.time();
  plan.made_by = computer.user;
  const auto add = [&](const Source& source, const settings::DeviceSettings& standard) {
    plan.devices.push_back(
        rollout::PlanFor(source.name, source.device, standard, sources.selection(), options.out_of_range));
  };
  if (options.restore.empty()) {
    if (options.places.size() != 1 || !IsFile(options.places.front()))
      throw std::invalid_argument("plan needs one file that ends in .qm5r, and --to with its devices");
    if (options.to.empty()) throw std::invalid_argument("--to is missing: for which devices?");
    plan.standard = options.places.front();
    const settings::DeviceSettings standard = StandardOf(sources, plan.standard);
    for (const std::string& place : options.to)
      sources.ForEach(place, [&](const Source& source) { add(source, standard); });
    return plan;
  }
  plan.standard = options.restore;
  const auto files = FilesOfSnapshot(computer, options.restore);
  if (options.places.empty()) throw std::invalid_argument("--restore needs the devices to restore");
  for (const std::string& place : options.places) {
    sources.ForEach(place, [&](const Source& source) {
      const auto file = files.find(source.name);
      if (file != files.end()) return add(source, StandardOf(sources, file->second));
      plan.devices.push_back({source.name,
                              source.device.settings.origin.neuron_id,
                              {},
                              {},
                              0,
                              "the snapshot has no file of it"});
    });
  }
  return plan;
}

/// A device that two patterns name is planned once.
void RemoveRepeated(rollout::Plan& plan) {
  std::map<std::string, int> seen;
  std::erase_if(plan.devices, [&](const DevicePlan& device) { return ++seen[device.path] > 1; });
}

rollout::Plan ReadPlanFile(const Computer& computer, const std::string& file) {
  constexpr std::size_t kLargestPlan = 1 << 26;
  rollout::PlanFile read = rollout::ParsePlan(computer.files.ReadStart(file, kLargestPlan));
  for (const settings::Finding& finding : read.findings)
    computer.errors << settings::FindingText(file, finding) << '\n';
  if (!read.findings.empty()) throw Failed(file + " has errors");
  return std::move(read.plan);
}

void Print(const Options& options, Computer& computer, const rollout::Plan& plan) {
  if (options.json) {
    Json devices = Json::array();
    for (const DevicePlan& device : plan.devices) devices.push_back(PlanJson(device));
    computer.out << TextOf({{"standard", plan.standard}, {"devices", devices}});
    return;
  }
  for (const DevicePlan& device : plan.devices)
    if (!device.changes.empty() || !device.IsComplete()) computer.out << LinesOf(device);
  computer.out << SummaryOf(plan) << '\n';
}

bool IsComplete(const rollout::Plan& plan) {
  return std::ranges::all_of(plan.devices, [](const DevicePlan& device) { return device.IsComplete(); });
}

/// Runs a plan and says what came of each device.
class PlanRun {
 public:
  PlanRun(const Options& options, Computer& computer, const rollout::Plan& plan)
      : options_(options), computer_(computer), plan_(plan), progress_(computer, plan.devices.size()) {}

  int Go(Sources& sources) {
    rollout::Head head{computer_.time(), computer_.user, {}, "apply"};
    if (!plan_.devices.empty())
      head.network = plan_.devices.front().path.substr(0, plan_.devices.front().path.find('/'));
    rollout::Record record(computer_.files, options_.records.empty() ? computer_.records : options_.records,
                           head, plan_, computer_.time);
    const rollout::Site site{[&](const std::string& path) {
                               progress_.Show(path);
                               return sources.DeviceAt(path);
                             },
                             sources.dialect(), [this] { return IsStopped(); },
                             [&] { return sources.IsServerLost(); }};
    rollout::Run(plan_, record, site).Go([this](const DevicePlan& device, const rollout::Result& result) {
      Settle(device, result);
    });
    return Finish(record.path());
  }

 private:
  bool IsStopped() {
    if (computer_.is_stopped && computer_.is_stopped()) return true;
    if (options_.stop_after != 0 && not_done_ >= options_.stop_after) return true;
    return options_.canary != 0 && not_done_ != 0 && results_.size() >= options_.canary;
  }

  void Settle(const DevicePlan& device, const rollout::Result& result) {
    results_[&device] = result;
    const bool is_done = IsDone(result.state) && device.IsComplete();
    not_done_ += !is_done;
    if (is_done || options_.json) return;
    progress_.Erase();
    computer_.out << device.path << '\n';
    if (!IsDone(result.state)) computer_.out << LineOf(NameOf(result.state), result.reason);
    computer_.out << LeftOutLines(device);
  }

  int Finish(const std::string& record) {
    progress_.Erase();
    std::map<State, std::size_t> counts;
    Json devices = Json::array();
    for (const DevicePlan& device : plan_.devices) {
      const auto found = results_.find(&device);
      const rollout::Result result = found == results_.end() ? rollout::Result{} : found->second;
      ++counts[result.state];
      devices.push_back({{"path", device.path}, {"state", NameOf(result.state)}, {"reason", result.reason}});
    }
    std::string text;
    Json json_counts;
    for (const auto& [state, count] : counts) {
      text += (text.empty() ? ": " : ", ") + std::to_string(count) + ' ' + std::string(NameOf(state));
      json_counts[std::string(NameOf(state))] = count;
    }
    if (options_.json)
      computer_.out << TextOf({{"record", record}, {"counts", json_counts}, {"devices", devices}});
    else
      computer_.out << CountOf(plan_.devices.size(), "device") << text << "\nrecord: " << record << '\n';
    return not_done_ == 0 && results_.size() == plan_.devices.size() ? kDone : kIncomplete;
  }

  const Options& options_;
  Computer& computer_;
  const rollout::Plan& plan_;
  Progress progress_;
  std::map<const DevicePlan*, rollout::Result> results_;
  std::size_t not_done_ = 0;
};

bool MayWrite(const Options& options, Computer& computer, const rollout::Plan& plan) {
  if (options.yes) return true;
  if (!options.json) Print(options, computer, plan);
  const auto answer = computer.ask ? computer.ask("Write this to the devices? (yes/no) ") : std::nullopt;
  if (!answer) throw Failed("nobody can be asked; --yes writes without a question");
  return text::EqualIgnoringCase(*answer, "yes") || text::EqualIgnoringCase(*answer, "y");
}

}  // namespace

int MakePlan(const Options& options, Computer& computer) {
  if (!options.target.empty() && !IsPlanFile(options.target))
    throw Failed(options.target + " does not end in " + std::string(rollout::kPlanExtension));
  Sources sources(options, computer, settings::Versions::Skip);
  rollout::Plan plan = Read(options, computer, sources);
  RemoveRepeated(plan);
  if (!options.target.empty()) WriteFile(options, computer, options.target, rollout::PlanText(plan));
  Print(options, computer, plan);
  return IsComplete(plan) ? kDone : kIncomplete;
}

int ApplyPlan(const Options& options, Computer& computer) {
  Sources sources(options, computer, settings::Versions::Skip);
  const bool has_plan = options.places.size() == 1 && IsPlanFile(options.places.front());
  rollout::Plan plan =
      has_plan ? ReadPlanFile(computer, options.places.front()) : Read(options, computer, sources);
  RemoveRepeated(plan);
  if (!MayWrite(options, computer, plan)) {
    computer.errors << "nothing was written\n";
    return kIncomplete;
  }
  return PlanRun(options, computer, plan).Go(sources);
}

}  // namespace qm5r
