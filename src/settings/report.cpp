#include "settings/report.h"

#include <algorithm>
#include <map>

#include "text/csv.h"
#include "text/strings.h"

namespace settings {
namespace {

constexpr std::string_view kStyle = R"(
body{font:11px/1.35 "Segoe UI",Arial,sans-serif;margin:16px;color:#111}
h1{font-size:20px;margin:0 0 4px}h2{font-size:15px;margin:20px 0 6px}p{margin:2px 0}
table{border-collapse:collapse}th,td{border:1px solid #999;padding:1px 4px;text-align:left;white-space:nowrap}
thead{display:table-header-group}tr{break-inside:avoid}thead th{background:#eee;vertical-align:bottom}
.f{white-space:normal;max-width:92px;min-width:34px}
.n{text-align:right}.d{background:#fde0dc;font-weight:700}.u{background:#eee;font-style:italic}
.b{height:40px;vertical-align:bottom}.b svg{display:block}
@page{size:A4 landscape;margin:10mm}
@media print{body{margin:0;font-size:8px}h2{break-before:page}h2.first{break-before:auto}
*{print-color-adjust:exact;-webkit-print-color-adjust:exact}}
)";

struct Column {
  const Field* field;
  std::size_t deviations = 0;
};

/// Null for a field that is equal or not compared.
const Difference* DifferenceOf(const ReportRoom& room, const Field& field) {
  if (!room.comparison) return nullptr;
  const auto& differences = room.comparison->differences;
  const auto found = std::ranges::find(differences, &field, &Difference::field);
  return found == differences.end() ? nullptr : &*found;
}

bool HasValues(const ReportRoom& room) { return room.state == "read" || room.state == "incomplete"; }

std::string Unit(const Field& field) { return std::string(UnitName(field.unit())); }

std::string Cell(const char* tag, const std::string& text, const char* css = "") {
  std::string cell = '<' + std::string(tag);
  if (*css) cell += " class=" + std::string(css);
  return cell + '>' + text::Escaped(text);
}

/// How many of the rooms deviate, as a bar with its number.
std::string Bar(std::size_t deviations, std::size_t rooms) {
  constexpr std::size_t kHeight = 24;
  const std::size_t height = rooms == 0 ? 0 : (deviations * kHeight + rooms - 1) / rooms;
  return "<td class=b><svg width=14 height=" + std::to_string(kHeight) +
         "><rect x=0.5 y=" + std::to_string(kHeight - height) + " width=13 height=" + std::to_string(height) +
         " fill=#c0392b /></svg>" + std::to_string(deviations);
}

class Page {
 public:
  explicit Page(const Report& report) : report_(report) {}

  std::string Html() {
    html_ = "<!DOCTYPE html>\n<html lang=en>\n<meta charset=utf-8>\n<title>" + text::Escaped(Title()) +
            "</title>\n<style>" + std::string(kStyle) + "</style>\n<h1>" + text::Escaped(Title()) + "</h1>\n";
    AddHead();
    AddRooms();
    for (std::size_t page = 0; page < model::kPageCaptions.size(); ++page) AddTable(static_cast<int>(page));
    return std::move(html_) + "</html>\n";
  }

 private:
  std::string Title() const { return "Settings of " + report_.place; }

  void AddHead() {
    std::map<std::string, std::size_t> counts;
    for (const ReportRoom& room : report_.rooms) ++counts[ResultOf(room)];
    html_ += "<p>" + text::Escaped(report_.made + (report_.made_by.empty() ? "" : ", " + report_.made_by));
    html_ +=
        "\n<p>" + std::to_string(report_.rooms.size()) + (report_.rooms.size() == 1 ? " device" : " devices");
    for (const char* result : {"equal", "read", "different", "incomplete", "not read", "another type"})
      if (counts.contains(result)) html_ += ", " + std::to_string(counts[result]) + ' ' + result;
    if (!report_.standard_name.empty())
      html_ += "\n<p>Standard: <b>" + text::Escaped(report_.standard_name) +
               "</b>. \xE2\x89\xA0 differs from the standard; ? is not known; - is not given.";
    html_ += '\n';
  }

  void AddRooms() {
    html_ += "<h2 class=first>Devices</h2>\n<table><thead><tr>";
    for (const char* heading :
         {"Device", "Result", "Deviations", "Neuron ID", "Model", "Software", "Type", "Module", "Not known"})
      html_ += Cell("th", heading);
    html_ += "</thead>\n";
    for (const ReportRoom& room : report_.rooms) {
      const Origin& origin = room.settings.origin;
      const std::string result = ResultOf(room);
      const auto held = [](const Difference& each) { return each.held.has_value(); };
      html_ += "<tr>" + Cell("td", room.name) +
               Cell("td", result, result == "equal" || result == "read" ? "" : "d");
      html_ +=
          room.comparison
              ? Cell("td", std::to_string(std::ranges::count_if(room.comparison->differences, held)), "n")
              : "<td>";
      for (const std::string& text : {origin.neuron_id, origin.model, origin.software_version,
                                      origin.hvac_type, origin.module_version, UnknownOf(room)})
        html_ += Cell("td", text);
      html_ += '\n';
    }
    html_ += "</table>\n";
  }

  /// The reason, and the fields of the standard that are not there without one.
  static std::string UnknownOf(const ReportRoom& room) {
    std::string unknown = room.reason;
    if (!room.comparison) return unknown;
    for (const Difference& difference : room.comparison->differences)
      if (!difference.held && difference.reason.empty())
        unknown += (unknown.empty() ? "" : "; ") + std::string(difference.field->name()) + " is not given";
    return unknown;
  }

  std::vector<Column> ColumnsOf(int page) const {
    std::vector<Column> columns;
    for (const model::FramePlace& frame : model::Frames()) {
      if (frame.page != page) continue;
      for (const model::FieldRow& place : frame.fields)
        for (const Field& field : Fields())
          if (field.place.control == place.control && report_.selection.Has(field))
            columns.push_back({&field});
    }
    for (Column& column : columns)
      for (const ReportRoom& room : report_.rooms)
        if (const Difference* difference = DifferenceOf(room, *column.field); difference && difference->held)
          ++column.deviations;
    return columns;
  }

  void AddTable(int page) {
    const std::vector<Column> columns = ColumnsOf(page);
    if (columns.empty()) return;
    html_ += "<h2>" +
             text::Escaped(text::WithoutAccelerator(model::kPageCaptions[static_cast<std::size_t>(page)])) +
             "</h2>\n<table><thead><tr><th>";
    AddFrames(columns);
    html_ += "\n<tr><th>Device";
    for (const Column& column : columns) html_ += Cell("th", std::string(column.field->place.label), "f");
    html_ += "\n<tr><th>Unit";
    for (const Column& column : columns) html_ += Cell("th", Unit(*column.field));
    if (!report_.standard_name.empty()) AddStandard(columns);
    html_ += "</thead>\n";
    for (const ReportRoom& room : report_.rooms)
      if (HasValues(room)) AddRoom(room, columns);
    html_ += "</table>\n";
  }

  /// The captions of frames over their columns.
  void AddFrames(const std::vector<Column>& columns) {
    for (std::size_t begin = 0, end = 0; begin < columns.size(); begin = end) {
      const std::string_view frame = columns[begin].field->frame;
      while (end < columns.size() && columns[end].field->frame == frame) ++end;
      html_ += "<th class=f colspan=" + std::to_string(end - begin) + '>' +
               text::Escaped(text::WithoutAccelerator(frame));
    }
  }

  void AddStandard(const std::vector<Column>& columns) {
    html_ += "\n<tr><th>Standard";
    for (const Column& column : columns)
      html_ += Cell("th", report_.standard.TextOf(*column.field).value_or("-"));
    html_ += "\n<tr><th>Devices that differ";
    for (const Column& column : columns) html_ += Bar(column.deviations, report_.rooms.size());
  }

  void AddRoom(const ReportRoom& room, const std::vector<Column>& columns) {
    html_ += "<tr>" + Cell("th", room.name);
    for (const Column& column : columns) {
      const auto& text = room.settings.TextOf(*column.field);
      const bool deviates = DifferenceOf(room, *column.field) != nullptr;
      if (!text)
        html_ += room.settings.UnreadOf(*column.field) || deviates ? "<td class=u>?" : "<td>-";
      else
        html_ += deviates ? Cell("td", "\xE2\x89\xA0 " + *text, "d") : Cell("td", *text);
    }
    html_ += '\n';
  }

  const Report& report_;
  std::string html_;
};

}  // namespace

void CompareRooms(Report& report) {
  if (report.standard_name.empty()) return;
  for (ReportRoom& room : report.rooms)
    if (HasValues(room)) room.comparison = Compare(report.standard, room.settings, report.selection);
}

std::string ResultOf(const ReportRoom& room) {
  if (!room.comparison) return room.state;
  return !room.comparison->IsComplete() ? "incomplete" : room.comparison->Differs() ? "different" : "equal";
}

std::string HtmlOf(const Report& report) { return Page(report).Html(); }

std::string CsvOf(const Report& report) {
  std::string csv = "\xEF\xBB\xBF";
  const auto add_row = [&](const std::vector<std::string>& first, const auto& cell_of) {
    std::vector<std::string> cells = first;
    for (const Field& field : Fields())
      if (report.selection.Has(field)) cells.push_back(cell_of(field));
    csv += text::CsvLine(cells);
  };
  add_row({"device", "result", "not known", "program ID", "Neuron ID", "model", "software version", "type",
           "network module"},
          [](const Field& field) { return std::string(field.name()); });
  const std::vector<std::string> none(8);
  const auto headed = [&](const char* name) {
    std::vector<std::string> cells = {name};
    cells.insert(cells.end(), none.begin(), none.end());
    return cells;
  };
  add_row(headed("(unit)"), Unit);
  if (!report.standard_name.empty())
    add_row(headed("(standard)"),
            [&](const Field& field) { return report.standard.TextOf(field).value_or(""); });
  for (const ReportRoom& room : report.rooms) {
    const Origin& origin = room.settings.origin;
    add_row({room.name, ResultOf(room), room.reason, origin.program_id, origin.neuron_id, origin.model,
             origin.software_version, origin.hvac_type, origin.module_version},
            [&](const Field& field) { return room.settings.TextOf(field).value_or(""); });
  }
  return csv;
}

}  // namespace settings
