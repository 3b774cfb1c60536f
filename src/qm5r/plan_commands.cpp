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

std::string RecordsFolder(const Options& options, const Computer& computer) {
  return options.records.empty() ? computer.records : options.records;
}

bool IsComplete(const rollout::Plan& plan) {
  return std::ranges::all_of(plan.devices, [](const DevicePlan& device) { return device.IsComplete(); });
}

/// Runs work and says what came of each device.
class WorkRun {
 public:
  /// `plan` is what the work was made of; it may have left fields out.
  WorkRun(const Options& options, Computer& computer, const rollout::Plan& plan,
          const std::vector<rollout::DeviceWork>& work)
      : options_(options), computer_(computer), plan_(plan), work_(work), progress_(computer, work.size()) {
    for (const DevicePlan& device : plan.devices) plans_[device.path] = &device;
  }

  int Go(Sources& sources, const std::string& action) {
    const std::string network =
        work_.empty() ? "" : work_.front().path.substr(0, work_.front().path.find('/'));
    rollout::Record record(computer_.files, RecordsFolder(options_, computer_),
                           {computer_.time(), computer_.user, network, action}, plan_, computer_.time);
    const rollout::Site site{[&](const std::string& path) {
                               progress_.Show(path);
                               return sources.DeviceAt(path);
                             },
                             sources.dialect(), [this] { return IsStopped(); },
                             [&] { return sources.IsServerLost(); }};
    rollout::Run(work_, record, site)
        .Go([this](const rollout::DeviceWork& device, const rollout::Result& result) {
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

  void Settle(const rollout::DeviceWork& device, const rollout::Result& result) {
    results_[device.path] = result;
    const auto plan = plans_.find(device.path);
    const std::string left_out = plan == plans_.end() ? "" : LeftOutLines(*plan->second);
    const bool is_done = IsDone(result.state) && left_out.empty();
    not_done_ += !is_done;
    if (is_done || options_.json) return;
    progress_.Erase();
    computer_.out << device.path << '\n';
    if (!IsDone(result.state)) computer_.out << LineOf(NameOf(result.state), result.reason);
    computer_.out << left_out;
  }

  int Finish(const std::string& record) {
    progress_.Erase();
    std::map<State, std::size_t> counts;
    Json devices = Json::array();
    for (const rollout::DeviceWork& device : work_) {
      const auto found = results_.find(device.path);
      const rollout::Result result = found == results_.end() ? rollout::Result{} : found->second;
      ++counts[result.state];
      devices.push_back({{"path", device.path}, {"state", NameOf(result.state)}, {"reason", result.reason}});
    }
    std::string text;
    Json json_counts = Json::object();
    for (const auto& [state, count] : counts) {
      text += (text.empty() ? ": " : ", ") + std::to_string(count) + ' ' + std::string(NameOf(state));
      json_counts[std::string(NameOf(state))] = count;
    }
    if (options_.json)
      computer_.out << TextOf({{"record", record}, {"counts", json_counts}, {"devices", devices}});
    else
      computer_.out << CountOf(work_.size(), "device") << text << "\nrecord: " << record << '\n';
    return not_done_ == 0 && results_.size() == work_.size() ? kDone : kIncomplete;
  }

  const Options& options_;
  Computer& computer_;
  const rollout::Plan& plan_;
  const std::vector<rollout::DeviceWork>& work_;
  Progress progress_;
  std::map<std::string, const DevicePlan*> plans_;
  std::map<std::string, rollout::Result> results_;
  std::size_t not_done_ = 0;
};

/// A record without a line that cannot be used; its last line may be torn.
rollout::RecordFile ReadRecord(const Computer& computer, const std::string& file) {
  constexpr std::size_t kLargestRecord = 1 << 28;
  if (!computer.files.FileExists(file)) throw Failed("there is no record " + file);
  rollout::RecordFile record = rollout::ParseRecord(computer.files.ReadStart(file, kLargestRecord));
  for (const settings::Finding& finding : record.findings)
    computer.errors << settings::FindingText(file, finding) << '\n';
  if (!record.findings.empty()) throw Failed(file + " has errors");
  return record;
}

bool MayWrite(const Options& options, Computer& computer, const std::string& question) {
  if (options.yes) return true;
  const auto answer = computer.ask ? computer.ask(question + " (yes/no) ") : std::nullopt;
  if (!answer) throw Failed("nobody can be asked; --yes writes without a question");
  if (text::EqualIgnoringCase(*answer, "yes") || text::EqualIgnoringCase(*answer, "y")) return true;
  computer.errors << "nothing was written\n";
  return false;
}

/// Prints a run and its writes to matching devices, if there are any.
void AddHistory(const Options& options, Computer& computer, const std::string& file,
                const rollout::RecordFile& record, const text::Pattern& path, Json& runs) {
  using Kind = rollout::Event::Kind;
  Json events = Json::array();
  std::string lines;
  for (const rollout::Event& event : record.events) {
    const rollout::Write& write = event.write;
    if (!path.Matches(write.path)) continue;
    if (event.kind == Kind::Write) {
      lines += "  ";
      lines.append(event.time).append("  ").append(write.path) += '\n';
      lines += LineOf(write.variable, write.before + " -> " + write.after);
      events.push_back({{"time", event.time},
                        {"path", write.path},
                        {"neuronId", write.neuron_id},
                        {"variable", write.variable},
                        {"format", write.format},
                        {"before", write.before},
                        {"after", write.after}});
    } else if (event.kind == Kind::Outcome) {
      lines += LineOf("", event.state + (event.reason.empty() ? "" : ": " + event.reason));
      events.push_back({{"time", event.time},
                        {"path", write.path},
                        {"variable", write.variable},
                        {"outcome", event.state},
                        {"reason", event.reason}});
    }
  }
  if (lines.empty() && path.HasWildcard() && path.Beginning().empty()) lines = "  nothing was written\n";
  if (lines.empty()) return;
  runs.push_back({{"record", file},
                  {"time", record.head.time},
                  {"user", record.head.user},
                  {"network", record.head.network},
                  {"action", record.head.action},
                  {"isTorn", record.is_torn},
                  {"events", events}});
  if (!options.json)
    computer.out << record.head.time << "  " << record.head.user << "  " << record.head.action << "\n  "
                 << file << (record.is_torn ? "  (its last line is torn)" : "") << '\n'
                 << lines;
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
  if (!options.yes && !options.json) Print(options, computer, plan);
  if (!MayWrite(options, computer, "Write this to the devices?")) return kIncomplete;
  const auto work = rollout::WorkOf(plan);
  return WorkRun(options, computer, plan, work).Go(sources, "apply");
}

int ResumeRun(const Options& options, Computer& computer) {
  const rollout::RecordFile record = ReadRecord(computer, options.places.front());
  if (record.head.action.starts_with("undo"))
    throw Failed(options.places.front() + " is of an undo; do that again instead");
  const rollout::Plan rest = RestOf(record);
  if (!options.yes && !options.json) Print(options, computer, rest);
  if (!MayWrite(options, computer, "Go on with these devices?")) return kIncomplete;
  Sources sources(options, computer, settings::Versions::Skip);
  const auto work = rollout::WorkOf(rest);
  return WorkRun(options, computer, rest, work).Go(sources, "resume " + options.places.front());
}

int UndoRun(const Options& options, Computer& computer) {
  const std::string& file = options.places.front();
  const rollout::RecordFile record = ReadRecord(computer, file);
  const auto work = rollout::UndoOf(record, text::Pattern(options.to.empty() ? "*" : options.to.front()));
  if (work.empty()) throw Failed(file + " has no writes to undo there");
  if (!MayWrite(options, computer,
                "Put " + CountOf(work.size(), "device") + " back as before " + record.head.time + "?"))
    return kIncomplete;
  Sources sources(options, computer, settings::Versions::Skip);
  rollout::Plan none;
  none.made = computer.time();
  none.made_by = computer.user;
  return WorkRun(options, computer, none, work).Go(sources, "undo " + file);
}

int ShowHistory(const Options& options, Computer& computer) {
  const std::string folder = RecordsFolder(options, computer), above = folder + computer.files.Separator();
  const text::Pattern path(options.places.empty() ? "*" : options.places.front());
  const auto content = computer.files.ReadFolder(folder);
  std::vector<std::string> names;
  for (const auto& entry : content ? content->entries : std::vector<platform::Files::Entry>())
    if (text::EndsWithIgnoringCase(entry.name, rollout::kRecordExtension)) names.push_back(entry.name);
  std::ranges::sort(names);
  Json runs = Json::array();
  bool is_readable = true;
  for (const std::string& name : names) {
    const std::string file = above + name;
    try {
      AddHistory(options, computer, file, ReadRecord(computer, file), path, runs);
    } catch (const Failed& failure) {
      computer.errors << "qm5r: " << failure.what() << '\n';
      is_readable = false;
    }
  }
  if (options.json) computer.out << TextOf(runs);
  return is_readable ? kDone : kIncomplete;
}

}  // namespace qm5r
