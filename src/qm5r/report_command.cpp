#include "qm5r/report_command.h"

#include <functional>

#include <algorithm>
#include <ostream>

#include "qm5r/commands.h"
#include "qm5r/output.h"
#include "settings/file_names.h"
#include "settings/report.h"
#include "text/csv.h"
#include "text/strings.h"

namespace qm5r {
namespace {

/// The columns of a snapshot's index.
enum Column : std::size_t { kPath, kFile, kState, kReason, kProgramId, kNeuronId, kColumns };

settings::ReportRoom RoomOf(const Source& source) {
  return {source.name, StateOf(source.device), ReasonOf(source.device), source.device.settings, {}};
}

settings::ReportRoom RoomOf(Computer& computer, const std::string& folder,
                            const std::vector<std::string>& row) {
  settings::ReportRoom room{row[kPath], row[kState], row[kReason], {}, {}};
  room.settings.origin.program_id = row[kProgramId];
  room.settings.origin.neuron_id = row[kNeuronId];
  if (row[kFile].empty()) return room;
  const std::string file = folder + computer.files.Separator() + row[kFile];
  settings::SettingsFile read = ReadFile(computer, file);
  const auto error = std::ranges::find(read.findings, true, &settings::Finding::is_error);
  if (error != read.findings.end()) throw Failed(settings::FindingText(file, *error));
  room.settings = std::move(read.settings);
  return room;
}

/// The rooms of a snapshot, also those that were not read; nothing if the folder has none.
std::optional<std::vector<settings::ReportRoom>> RoomsOfSnapshot(Computer& computer,
                                                                 const std::string& folder) {
  const std::string index = folder + computer.files.Separator() + settings::FileNames::kIndex;
  if (!computer.files.FileExists(index)) return std::nullopt;
  constexpr std::size_t kLargestIndex = 64 << 20;
  const auto rows = text::CsvRows(computer.files.ReadStart(index, kLargestIndex));
  std::vector<settings::ReportRoom> rooms;
  for (std::size_t i = 1; i < rows.size(); ++i) {
    if (rows[i].size() < kColumns)
      throw Failed(index + ": row " + std::to_string(i + 1) + " has too few cells");
    rooms.push_back(RoomOf(computer, folder, rows[i]));
  }
  return rooms;
}

Json ReportJson(const settings::Report& report) {
  Json json = {{"place", report.place}, {"made", report.made}};
  if (!report.made_by.empty()) json["madeBy"] = report.made_by;
  if (!report.standard_name.empty())
    json["standard"] = SettingsJson({report.standard_name, {report.standard, false, {}}}, false);
  Json& rooms = json["devices"] = Json::array();
  for (const settings::ReportRoom& room : report.rooms) {
    Json each = SettingsJson({room.name, {room.settings, false, {}}}, false);
    each["state"] = ResultOf(room);
    if (!room.reason.empty()) each["reason"] = room.reason;
    if (room.comparison) each["differences"] = DifferencesJson(*room.comparison);
    rooms.push_back(std::move(each));
  }
  return json;
}

/// What makes a report of the file's kind. Throws Failed for any other kind.
std::function<std::string(const settings::Report&)> MakerOf(const std::string& file) {
  if (text::EndsWithIgnoringCase(file, ".html"))
    return [](const settings::Report& report) { return HtmlOf(report); };
  if (text::EndsWithIgnoringCase(file, ".csv"))
    return [](const settings::Report& report) { return CsvOf(report); };
  if (text::EndsWithIgnoringCase(file, ".json"))
    return [](const settings::Report& report) { return TextOf(ReportJson(report)); };
  throw Failed(file + " does not end in .html, .csv or .json");
}

}  // namespace

int MakeReport(const Options& options, Computer& computer) {
  const auto make = MakerOf(options.target);
  Sources sources(options, computer, settings::Versions::Read);
  settings::Report report;
  report.place = options.places.front();
  report.made = computer.local_time();
  if (!options.anonymous) report.made_by = computer.user;
  report.selection = sources.selection();
  if (!options.standard.empty()) {
    std::vector<Source> found;
    sources.ForEach(options.standard, [&](Source source) { found.push_back(std::move(source)); });
    if (found.size() != 1 || found.front().device.settings.HasNone())
      throw Failed(options.standard + " gives no standard");
    report.standard_name = options.standard;
    report.standard = std::move(found.front().device.settings);
  }
  if (auto rooms = RoomsOfSnapshot(computer, report.place))
    report.rooms = *std::move(rooms);
  else
    sources.ForEach(report.place, [&](const Source& source) { report.rooms.push_back(RoomOf(source)); });
  CompareRooms(report);
  WriteFile(options, computer, options.target, make(report));
  bool complete = true, differs = false;
  for (const settings::ReportRoom& room : report.rooms) {
    const std::string result = ResultOf(room);
    complete = complete && result != "not read" && result != "incomplete";
    differs = differs || result == "different";
  }
  computer.out << options.target << '\n';
  return !complete ? kIncomplete : differs ? kDifferences : kDone;
}

}  // namespace qm5r
