#include "settings/report.h"

#include <algorithm>
#include <map>

#include "text/csv.h"
#include "text/strings.h"

namespace settings {
namespace {

// Texts of the network wrap anywhere. Values do not, so that a wide table narrows its texts first. A table's
// head stays in view on the screen, where its borders must be its own to move with it, and is repeated on
// paper.
constexpr std::string_view kStyle = R"(
body{font:11px/1.35 "Segoe UI",Arial,sans-serif;margin:16px;color:#111}
h1{font-size:20px;margin:0 0 4px}h2{font-size:15px;margin:20px 0 6px;break-after:avoid}p{margin:2px 0}
h1,p{overflow-wrap:anywhere}input{width:11px;height:11px;margin:0 4px 0 0;vertical-align:middle}
table{border-collapse:collapse}
th,td{border:1px solid #999;padding:1px 4px;text-align:left;white-space:nowrap}
thead{display:table-header-group}tr{break-inside:avoid}thead th,thead td{background:#eee;vertical-align:bottom}
.f{white-space:normal;max-width:92px;min-width:34px}
.w{white-space:normal;overflow-wrap:anywhere;min-width:80px;max-width:220px}.r{min-width:160px;max-width:460px}
.n{text-align:right}.d{background:#fde0dc;font-weight:700}.u{background:#eee;font-style:italic}
svg{display:block}#only:checked~table .e{display:none}
@media screen{table{border-collapse:separate;border-spacing:0}th,td{border-width:0 1px 1px 0}
thead tr:first-child th{border-top-width:1px}tr>:first-child{border-left-width:1px}
thead{position:sticky;top:0}}
@page{size:A4 landscape;margin:10mm 10mm 14mm;
@bottom-right{content:counter(page) " / " counter(pages);font:9px sans-serif}}
@media print{body{margin:0;font-size:9px;line-height:1.25}h2{margin-top:14px}.tabs{display:none}
*{print-color-adjust:exact;-webkit-print-color-adjust:exact}}
)";

/// Longer texts may wrap.
constexpr std::size_t kShort = 20;

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

std::size_t DeviationsOf(const ReportRoom& room) {
  if (!room.comparison) return 0;
  const auto held = [](const Difference& each) { return each.held.has_value(); };
  return static_cast<std::size_t>(std::ranges::count_if(room.comparison->differences, held));
}

std::string Unit(const Field& field) { return std::string(UnitName(field.unit())); }

/// For people: in files, degrees are "C".
std::string ShownUnit(const Field& field) { return (Unit(field) == "C" ? "\xC2\xB0" : "") + Unit(field); }

std::string Cell(const char* tag, const std::string& text, const char* css = "") {
  std::string cell = '<' + std::string(tag);
  if (*css) cell += " class=" + std::string(css);
  return cell + '>' + text::Escaped(text);
}

std::string Row(const ReportRoom& room) { return ResultOf(room) == "equal" ? "<tr class=e>" : "<tr>"; }

std::string Caption(std::size_t page) {
  return text::Escaped(text::WithoutAccelerator(model::kPageCaptions[page]));
}

/// How many of the rooms deviate, as a bar with its number.
std::string Bar(std::size_t deviations, std::size_t rooms) {
  if (deviations == 0) return "<td>0";
  constexpr std::size_t kHeight = 16;
  const std::size_t height = (deviations * kHeight + rooms - 1) / rooms;
  return "<td><svg width=14 height=" + std::to_string(kHeight) +
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
    AddTabs();
    AddRooms();
    for (std::size_t page = 0; page < model::kPageCaptions.size(); ++page) AddTable(page);
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
    html_ += ". ? is not known; - is not given.\n";
    if (!report_.standard_name.empty()) AddDeviations();
  }

  void AddDeviations() {
    std::size_t deviations = 0;
    for (const ReportRoom& room : report_.rooms) deviations += DeviationsOf(room);
    html_ += "<p>Standard: <b>" + text::Escaped(report_.standard_name) + "</b>, <b>" +
             std::to_string(deviations) + (deviations == 1 ? " deviation" : " deviations") +
             "</b>. \xE2\x89\xA0 differs from the standard.</p>\n"
             "<input type=checkbox id=only><label for=only>Without devices that are equal</label>\n";
  }

  void AddTabs() {
    html_ += "<p class=tabs>";
    for (std::size_t page = 0; page < model::kPageCaptions.size(); ++page)
      if (!ColumnsOf(page).empty())
        html_ += "<a href=#tab" + std::to_string(page) + '>' + Caption(page) + "</a> &nbsp; ";
    html_ += '\n';
  }

  void AddRooms() {
    html_ += "<h2>Devices</h2>\n<table><thead><tr>";
    for (const char* heading :
         {"Device", "Result", "Deviations", "Neuron ID", "Model", "Software", "Type", "Module", "Not known"})
      html_ += Cell("th", heading);
    html_ += "</thead>\n";
    for (const ReportRoom& room : report_.rooms) {
      const Origin& origin = room.settings.origin;
      const std::string result = ResultOf(room);
      html_ += Row(room) + Cell("th", room.name, "w") +
               Cell("td", result, result == "equal" || result == "read" ? "" : "d") +
               Cell("td", room.comparison ? std::to_string(DeviationsOf(room)) : "", "n");
      for (const std::string& text :
           {origin.neuron_id, origin.model, origin.software_version, origin.hvac_type, origin.module_version})
        html_ += Cell("td", text, text.size() > kShort ? "w" : "");
      html_ += Cell("td", UnknownOf(room), "\"w r\"") + '\n';
    }
    html_ += "</table>\n";
  }

  /// The reason, and the fields of the standard that are not there without one.
  static std::string UnknownOf(const ReportRoom& room) {
    if (!room.comparison) return room.reason;
    std::vector<std::string> missing;
    for (const Difference& difference : room.comparison->differences)
      if (!difference.held && difference.reason.empty()) missing.emplace_back(difference.field->name());
    if (missing.empty()) return room.reason;
    return room.reason + (room.reason.empty() ? "" : "; ") + "not given: " + text::Join(missing, ", ");
  }

  std::vector<Column> ColumnsOf(std::size_t page) const {
    std::vector<Column> columns;
    for (const model::FramePlace& frame : model::Frames()) {
      if (static_cast<std::size_t>(frame.page) != page) continue;
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

  void AddTable(std::size_t page) {
    const std::vector<Column> columns = ColumnsOf(page);
    if (columns.empty()) return;
    html_ += "<h2 id=tab" + std::to_string(page) + '>' + Caption(page) + "</h2>\n<table><thead><tr><th>" +
             Caption(page);
    AddFrames(columns);
    html_ += "\n<tr><th>Device";
    for (const Column& column : columns) html_ += Cell("th", std::string(column.field->place.label), "f");
    html_ += "\n<tr><th>Unit";
    for (const Column& column : columns) html_ += Cell("th", ShownUnit(*column.field));
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
    html_ += Row(room) + Cell("th", room.name, "w");
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
