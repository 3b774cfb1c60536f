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
  std::size_t unknown = 0;
};

/// What is compared of a room, field by field; nothing for a field that is equal or not compared.
using Deviations = std::map<const Field*, Difference>;

Deviations DeviationsOf(const Report& report, const ReportRoom& room) {
  Deviations deviations;
  if (report.standard_name.empty()) return deviations;
  for (Difference& difference : Compare(report.standard, room.settings, report.selection).differences)
    deviations.emplace(difference.field, std::move(difference));
  return deviations;
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
  explicit Page(const Report& report) : report_(report) {
    for (const ReportRoom& room : report.rooms) deviations_.push_back(DeviationsOf(report, room));
  }

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
    for (const ReportRoom& room : report_.rooms) ++counts[ResultOf(report_, room)];
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
    for (std::size_t i = 0; i < report_.rooms.size(); ++i) {
      const ReportRoom& room = report_.rooms[i];
      const Origin& origin = room.settings.origin;
      const std::string result = ResultOf(report_, room);
      const auto held = [](const auto& each) { return each.second.held.has_value(); };
      html_ += "<tr>" + Cell("td", room.name) +
               Cell("td", result, result == "equal" || result == "read" ? "" : "d");
      html_ += HasValues(room) ? Cell("td", std::to_string(std::ranges::count_if(deviations_[i], held)), "n")
                               : "<td>";
      for (const std::string& text : {origin.neuron_id, origin.model, origin.software_version,
                                      origin.hvac_type, origin.module_version, UnknownOf(i)})
        html_ += Cell("td", text);
      html_ += '\n';
    }
    html_ += "</table>\n";
  }

  /// The reason, and the fields of the standard that are not there without one.
  std::string UnknownOf(std::size_t place) const {
    std::string unknown = report_.rooms[place].reason;
    if (!HasValues(report_.rooms[place])) return unknown;
    for (const auto& [field, difference] : deviations_[place])
      if (!difference.held && difference.reason.empty())
        unknown += (unknown.empty() ? "" : "; ") + std::string(field->name()) + " is not given";
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
    for (Column& column : columns) {
      for (const Deviations& room : deviations_) {
        const auto found = room.find(column.field);
        if (found != room.end()) ++(found->second.held ? column.deviations : column.unknown);
      }
    }
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
    for (std::size_t i = 0; i < report_.rooms.size(); ++i)
      if (HasValues(report_.rooms[i])) AddRoom(i, columns);
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

  void AddRoom(std::size_t place, const std::vector<Column>& columns) {
    const ReportRoom& room = report_.rooms[place];
    html_ += "<tr>" + Cell("th", room.name);
    for (const Column& column : columns) {
      const auto& text = room.settings.TextOf(*column.field);
      const bool deviates = deviations_[place].contains(column.field);
      if (!text)
        html_ += room.settings.UnreadOf(*column.field) || deviates ? "<td class=u>?" : "<td>-";
      else
        html_ += deviates ? Cell("td", "\xE2\x89\xA0 " + *text, "d") : Cell("td", *text);
    }
    html_ += '\n';
  }

  const Report& report_;
  std::vector<Deviations> deviations_;
  std::string html_;
};

}  // namespace

std::string ResultOf(const Report& report, const ReportRoom& room) {
  if (!HasValues(room) || report.standard_name.empty()) return room.state;
  const Comparison comparison = Compare(report.standard, room.settings, report.selection);
  return !comparison.IsComplete() ? "incomplete" : comparison.Differs() ? "different" : "equal";
}

std::string HtmlOf(const Report& report) { return Page(report).Html(); }

std::string CsvOf(const Report& report) {
  std::string csv = "\xEF\xBB\xBF";
  const auto add_row = [&](const std::vector<std::string>& first, const auto& cell_of) {
    std::vector<std::string> cells = first;
    for (const Field& field : Fields())
      if (report.selection.Has(field)) cells.push_back(cell_of(field));
    for (std::string& cell : cells) cell = text::CsvCell(cell);
    csv += text::Join(cells, ",") + "\r\n";
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
    add_row({room.name, ResultOf(report, room), room.reason, origin.program_id, origin.neuron_id,
             origin.model, origin.software_version, origin.hvac_type, origin.module_version},
            [&](const Field& field) { return room.settings.TextOf(field).value_or(""); });
  }
  return csv;
}

}  // namespace settings
