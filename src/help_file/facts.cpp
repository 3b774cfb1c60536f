#include "help_file/facts.h"

#include <algorithm>

#include "text/numbers.h"
#include "text/strings.h"

namespace help_file {
namespace {

using model::Unit;

std::string FromTo(double least, double most, const std::string& unit) {
  return text::ShortestText(least) + "&nbsp;to&nbsp;" + text::ShortestText(most) +
         (unit.empty() ? "" : "&nbsp;" + unit);
}

std::string UnitInWords(Unit unit) {
  switch (unit) {
    case Unit::None:
    case Unit::Temperature:
    case Unit::TemperatureDifference:
      return {};
    case Unit::Percent:
      return "%";
    case Unit::Seconds:
      return "seconds";
    case Unit::Minutes:
      return "minutes";
    case Unit::Hours:
      return "hours";
  }
  return {};
}

/// Where the device keeps the value: the network variable and, where it has several, the field in it.
std::string NameInDevice(const model::CatalogueRow& row) {
  const std::string point(row.point), name(row.name);
  return name == point || name.starts_with(point + ".") ? name : point + "." + name;
}

std::string Fact(const std::string& name, const std::string& value) {
  return "<tr><th>" + name + "</th><td>" + value + "</td></tr>\n";
}

}  // namespace

Place PlaceOf(model::ControlRef control) {
  for (const model::FramePlace& frame : model::Frames())
    for (const model::FieldRow& field : frame.fields)
      if (field.control == control)
        return {frame.page, text::WithoutAccelerator(frame.caption), std::string(field.label)};
  return {};
}

std::string TitleOf(model::ControlRef control) {
  if (control.array == model::ScreenArray::lbModel) return "Thermostat model";
  if (control.array == model::ScreenArray::lbHvacType) return "HVAC type";
  const Place place = PlaceOf(control);
  return place.label.empty() ? place.frame : place.frame + ": " + place.label;
}

const model::CatalogueRow* RowOf(model::ControlRef control) {
  const auto rows = model::Catalogue();
  const auto row = std::ranges::find(rows, control, &model::CatalogueRow::control);
  return row != rows.end() ? &*row : nullptr;
}

std::string RangeOf(model::ControlRef control) {
  const model::CatalogueRow* const row = RowOf(control);
  if (!row || !row->limits) return {};
  const model::CatalogueLimits& limits = *row->limits;
  const Unit unit = model::FieldOf(control)->unit;
  if (unit != Unit::Temperature && unit != Unit::TemperatureDifference)
    return FromTo(limits.si_min, limits.si_max, UnitInWords(unit));
  return FromTo(limits.si_min, limits.si_max, "&deg;C") + ", or " +
         FromTo(limits.us_min, limits.us_max, "&deg;F");
}

std::string FactsOf(const FieldSource& field) {
  std::string facts;
  const Place place = PlaceOf(field.control);
  if (place.page >= 0) {
    const std::string tab =
        text::WithoutAccelerator(model::kPageCaptions[static_cast<std::size_t>(place.page)]);
    facts += Fact("On the screen", Escaped("tab " + tab + ", frame " + place.frame));
  }
  if (const std::string range = RangeOf(field.control); !range.empty()) facts += Fact("Range", range);
  const model::CatalogueRow* const row = RowOf(field.control);
  if (!row) return facts;
  if (row->round_step != 0)
    facts += Fact("Shown", "rounded to steps of " + text::ShortestText(row->round_step) + " degree");
  if (row->offset_value)
    facts += Fact("At a limit",
                  "a value exactly at a limit is stored 0.05&nbsp;&deg;C or 0.025&nbsp;&deg;F inside it");
  if (!row->description.empty())
    facts += Fact("In messages", "&ldquo;" + Escaped(row->description) + "&rdquo;");
  return facts + Fact("In the device", "<code>" + Escaped(NameInDevice(*row)) + "</code>");
}

std::string ChoicesOf(const FieldSource& field) {
  if (field.control.array != model::ScreenArray::cbNvi) return {};
  std::string choices = "<h2>Choices</h2>\n<table class=\"choices\">\n";
  for (const std::string_view item : model::ListItems(field.control.index)) {
    const auto meaning = field.items.find(item);
    if (meaning == field.items.end())
      throw SourceError(NameOf(field.control) + ": nothing is said about " + std::string(item));
    choices += Fact("<code>" + Escaped(item) + "</code>", meaning->second);
  }
  return choices + "</table>\n";
}

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

}  // namespace help_file
