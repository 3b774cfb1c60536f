#include "qm5r/commands.h"

#include <algorithm>
#include <iostream>
#include <map>

#include "qm5r/output.h"
#include "qm5r/plan_commands.h"
#include "qm5r/report_command.h"
#include "qm5r/sources.h"
#include "settings/comparison.h"
#include "settings/file_names.h"
#include "text/csv.h"

namespace qm5r {
namespace {

using settings::Versions;

/// Notes when and by whom the settings were read.
void Sign(settings::Origin& origin, const Options& options, const Computer& computer) {
  origin.saved = computer.time();
  if (!options.anonymous) origin.saved_by = computer.user;
}

void SaySomethingIsMissing(Computer& computer, const Source& source) {
  computer.errors << source.name << ": " << StateOf(source.device) << ": " << ReasonOf(source.device) << '\n';
}

/// How many devices are in which state.
class Counts {
 public:
  std::size_t& operator[](const std::string& state) { return counts_[state]; }
  bool AreComplete() const { return !counts_.contains("not read") && !counts_.contains("incomplete"); }
  Json AsJson() const { return counts_; }

  /// "9 devices: 5 equal, 2 different, 2 not read"
  std::string Text() const {
    std::size_t all = 0;
    std::string states;
    for (const char* state :
         {"equal", "like most", "read", "different", "incomplete", "not read", "another type"}) {
      const auto count = counts_.find(state);
      if (count == counts_.end()) continue;
      all += count->second;
      states += (states.empty() ? ": " : ", ") + std::to_string(count->second) + ' ' + state;
    }
    return std::to_string(all) + (all == 1 ? " device" : " devices") + states;
  }

 private:
  std::map<std::string, std::size_t> counts_;
};

int Save(const Options& options, Computer& computer) {
  if (!options.target.empty() && !IsFile(options.target))
    throw Failed(options.target + " does not end in " + std::string(settings::kFileExtension) +
                 ", by which the commands know files");
  Sources sources(options, computer, Versions::Read);
  std::vector<Source> found;
  sources.ForEach(options.places.front(), [&](Source source) { found.push_back(std::move(source)); });
  if (found.size() != 1)
    throw Failed(options.places.front() + " names " + std::to_string(found.size()) +
                 " devices; snapshot saves more than one");
  Source& source = found.front();
  const std::string state = StateOf(source.device);
  if (state == "another type") throw Failed(source.name + " is of another type: " + ReasonOf(source.device));
  if (state != "read") SaySomethingIsMissing(computer, source);
  if (state == "not read") return kIncomplete;
  Sign(source.device.settings.origin, options, computer);
  const std::string name = source.name.substr(source.name.rfind('/') + 1);
  const std::string file = options.target.empty()
                               ? settings::FileNameOf(name) + std::string(settings::kFileExtension)
                               : options.target;
  WriteFile(options, computer, file, settings::SettingsText(source.device.settings));
  if (options.json)
    computer.out << TextOf({{"file", file}, {"state", state}});
  else
    computer.out << file << '\n';
  return state == "read" ? kDone : kIncomplete;
}

int Check(const Options& options, Computer& computer) {
  Json results = Json::array();
  bool failed = false;
  const auto check = [&](const std::string& file) {
    const settings::SettingsFile read = ReadFile(computer, file);
    failed = failed || read.HasErrors();
    Json result = {{"file", file}, {"usable", !read.HasErrors()}, {"findings", Json::array()}};
    for (const settings::Finding& finding : read.findings) {
      if (!options.json) computer.out << settings::FindingText(file, finding) << '\n';
      result["findings"].push_back(
          {{"line", finding.line}, {"kind", finding.is_error ? "error" : "warning"}, {"text", finding.text}});
    }
    results.push_back(std::move(result));
  };
  const auto say_and_go_on = [&](const auto& step) {
    try {
      step();
    } catch (const Failed& failure) {
      failed = true;
      computer.errors << "qm5r: " << failure.what() << '\n';
    }
  };
  for (const std::string& place : options.places)
    say_and_go_on([&] {
      for (const std::string& file : FilesNamed(computer, place)) say_and_go_on([&] { check(file); });
    });
  if (options.json) computer.out << TextOf(results);
  return failed ? kFailed : kDone;
}

int Show(const Options& options, Computer& computer) {
  Sources sources(options, computer, Versions::Read);
  Json shown = Json::array();
  bool complete = true;
  for (const std::string& place : options.places) {
    sources.ForEach(place, [&](const Source& source) {
      const std::string state = StateOf(source.device);
      complete = complete && (state == "read" || state == "another type");
      if (options.json)
        shown.push_back(SettingsJson(source, options.fahrenheit));
      else
        computer.out << SettingsLines(source, options.fahrenheit);
    });
  }
  if (options.json) computer.out << TextOf(shown);
  return complete ? kDone : kIncomplete;
}

/// Compares devices one by one and prints those that are not known to be equal to the standard.
class ComparisonRun {
 public:
  /// Whose values are wanted, "standard" or "most", and what a device is that has them.
  ComparisonRun(const Options& options, Computer& computer, const settings::Selection& selection,
                const char* wanted_by, const char* agrees)
      : options_(options),
        computer_(computer),
        selection_(selection),
        wanted_by_(wanted_by),
        agrees_(agrees) {}

  void Add(const settings::DeviceSettings& standard, const Source& source) {
    const std::string state = StateOf(source.device);
    if (state == "another type" || state == "not read") return Leave(source, state);
    const settings::Comparison comparison = Compare(standard, source.device.settings, selection_);
    const std::string result = !comparison.IsComplete() ? "incomplete"
                               : comparison.Differs()   ? "different"
                                                        : agrees_;
    differs_ = differs_ || comparison.Differs();
    ++counts_[result];
    if (options_.json)
      AddJson(result, ComparisonJson(source, comparison));
    else if (result != agrees_)
      computer_.out << ComparisonLines(source, comparison, wanted_by_);
  }

  void SayUnknown(const settings::Unread& unread, const std::string& standard) {
    standard_is_complete_ = false;
    computer_.errors << standard << ": " << unread.variable << " is not known: " << unread.reason << '\n';
  }

  void SaySplit(const settings::Majority::Split& split) {
    differs_ = true;
    std::string values;
    for (const auto& [text, count] : split.values)
      values +=
          (values.empty() ? "" : ", ") + std::to_string(count) + " have " + ValueText(*split.field, text);
    if (options_.json)
      splits_.push_back({{"field", std::string(split.field->name())}, {"values", values}});
    else
      computer_.out << split.field->name() << ": no value is held by more than half: " << values << '\n';
  }

  int Finish(const std::string& standard) {
    if (options_.json)
      computer_.out << TextOf({{"standard", standard},
                               {"devices", devices_},
                               {"noCommonValue", splits_},
                               {"counts", counts_.AsJson()}});
    else
      computer_.out << counts_.Text() << '\n';
    if (!standard_is_complete_ || !counts_.AreComplete()) return kIncomplete;
    return differs_ ? kDifferences : kDone;
  }

 private:
  void Leave(const Source& source, const std::string& state) {
    ++counts_[state];
    const std::string reason = ReasonOf(source.device);
    if (options_.json)
      AddJson(state, {{"name", source.name}, {"reason", reason}});
    else
      computer_.out << source.name << "\n  " << state << ": " << reason << '\n';
  }

  void AddJson(const std::string& state, Json device) {
    device["state"] = state;
    devices_.push_back(std::move(device));
  }

  const Options& options_;
  Computer& computer_;
  const settings::Selection& selection_;
  const char* wanted_by_;
  const char* agrees_;
  bool standard_is_complete_ = true;
  bool differs_ = false;
  Counts counts_;
  Json devices_ = Json::array();
  Json splits_ = Json::array();
};

int CompareWithStandard(const Options& options, Computer& computer) {
  Sources sources(options, computer, Versions::Skip);
  std::vector<Source> first;
  const std::string& place = options.places.front();
  sources.ForEach(place, [&](Source source) { first.push_back(std::move(source)); });
  if (first.size() != 1)
    throw Failed("the standard must be one device or file; " + place + " names " +
                 std::to_string(first.size()));
  const settings::DeviceSettings& standard = first.front().device.settings;
  if (standard.HasNone()) throw Failed(place + " gives no standard: " + ReasonOf(first.front().device));
  const auto sets = [&](const settings::Field& field) {
    return sources.selection().Has(field) && standard.TextOf(field);
  };
  if (std::ranges::none_of(settings::Fields(), sets))
    throw Failed(place + " sets none of the fields to compare");
  ComparisonRun run(options, computer, sources.selection(), "standard", "equal");
  for (const settings::Unread& unread : UnknownInStandard(standard, sources.selection()))
    run.SayUnknown(unread, place);
  for (std::size_t i = 1; i < options.places.size(); ++i)
    sources.ForEach(options.places[i], [&](const Source& source) { run.Add(standard, source); });
  return run.Finish(place);
}

int FindOdd(const Options& options, Computer& computer) {
  Sources sources(options, computer, Versions::Skip);
  settings::Majority majority(sources.selection());
  std::vector<Source> devices;
  for (const std::string& place : options.places) {
    sources.ForEach(place, [&](Source source) {
      majority.Add(source.device.settings);
      devices.push_back(std::move(source));
    });
  }
  ComparisonRun run(options, computer, sources.selection(), "most", "like most");
  const settings::DeviceSettings standard = majority.Standard();
  for (const Source& source : devices) run.Add(standard, source);
  for (const auto& split : majority.Splits()) run.SaySplit(split);
  return run.Finish("most");
}

int Snapshot(const Options& options, Computer& computer) {
  const std::string folder = options.target + computer.files.Separator();
  const std::string index = folder + settings::FileNames::kIndex;
  if (!options.force && computer.files.FileExists(index))
    throw Failed(options.target + " has a snapshot already; --force replaces its files");
  Sources sources(options, computer, Versions::Read);
  settings::FileNames names(computer.files.Separator());
  std::string rows = "path,file,state,reason,program ID,Neuron ID,model,software version\r\n";
  Counts counts;
  sources.ForEach(options.places.front(), [&](Source source) {
    settings::Origin& origin = source.device.settings.origin;
    const std::string state = StateOf(source.device);
    ++counts[state];
    std::string file;
    if (state == "read" || state == "incomplete") {
      file = names.For(source.name);
      Sign(origin, options, computer);
      WriteFile(options, computer, folder + file, settings::SettingsText(source.device.settings));
    }
    if (state != "read") SaySomethingIsMissing(computer, source);
    rows += text::CsvLine({source.name, file, state, ReasonOf(source.device), origin.program_id,
                           origin.neuron_id, origin.model, origin.software_version});
  });
  WriteFile(options, computer, index, "\xEF\xBB\xBF" + rows);
  computer.out << (options.json ? TextOf({{"index", index}, {"counts", counts.AsJson()}})
                                : index + ": " + counts.Text() + '\n');
  return counts.AreComplete() ? kDone : kIncomplete;
}

int RunCommand(const Options& options, Computer& computer) {
  switch (options.command) {
    case Command::Save:
      return Save(options, computer);
    case Command::Check:
      return Check(options, computer);
    case Command::Show:
      return Show(options, computer);
    case Command::Compare:
      return options.odd ? FindOdd(options, computer) : CompareWithStandard(options, computer);
    case Command::Snapshot:
      return Snapshot(options, computer);
    case Command::Report:
      return MakeReport(options, computer);
    case Command::Plan:
      return MakePlan(options, computer);
    case Command::Apply:
      return ApplyPlan(options, computer);
    case Command::Resume:
      return ResumeRun(options, computer);
    case Command::Undo:
      return UndoRun(options, computer);
    case Command::History:
      return ShowHistory(options, computer);
  }
  return kFailed;
}

}  // namespace

int Run(const Options& options, Computer& computer) {
  try {
    return RunCommand(options, computer);
  } catch (const platform::Error& error) {
    computer.errors << console::ErrorText("qm5r", error);
  } catch (const std::invalid_argument& error) {
    computer.errors << "qm5r: " << error.what() << '\n';
    return kWrongCommandLine;
  } catch (const std::exception& failure) {
    computer.errors << "qm5r: " << failure.what() << '\n';
  }
  return kFailed;
}

}  // namespace qm5r
