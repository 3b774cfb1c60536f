#include "model/field_tips.h"

#include <algorithm>
#include <string>

#include "model/catalogue.h"
#include "model/field_guide.h"
#include "text/numbers.h"

namespace model {
namespace {

std::string UnitOf(const FieldPlace& field, int display_units) {
  // The correction of the humidity stands beside a temperature unit, and is none.
  if (field.control == txtNvi(10)) return " %";
  switch (field.unit) {
    case UnitLabel::Temperature:
      return " " + TemperatureUnit(display_units);
    case UnitLabel::Percent:
      return " %";
    case UnitLabel::Seconds:
      return " Sec";
    case UnitLabel::None:
      break;
  }
  // Times that are labelled by their unit alone.
  return field.label == "Hours" || field.label == "Min" ? " " + std::string(field.label) : "";
}

/// "4.5 to 32 ºC" on a line of its own; empty where the field has no limits.
std::string RangeOf(const FieldPlace& field, int display_units) {
  const auto rows = Catalogue();
  const auto row = std::ranges::find(rows, field.control, &CatalogueRow::control);
  if (row == rows.end() || !row->limits) return {};
  const CatalogueLimits& limits = *row->limits;
  const bool metric = display_units == 0;
  return "\r\n" + text::ShortestText(metric ? limits.si_min : limits.us_min) + " to " +
         text::ShortestText(metric ? limits.si_max : limits.us_max) + UnitOf(field, display_units);
}

void Explain(const ConfigurationScreen& screen, ControlRef control, const std::string& range) {
  if (const FieldGuide* guide = GuideOf(control))
    screen.Find(control)->SetToolTip(std::string(guide->meaning) + range);
}

}  // namespace

std::string TemperatureUnit(int units) { return units == 0 ? "\u00BAC" : units == 1 ? "\u00BAF" : "\u00BAX"; }

void ShowFieldTips(ConfigurationScreen& screen, int display_units) {
  for (const FramePlace& frame : Frames())
    for (const FieldPlace& field : frame.fields)
      Explain(screen, field.control, RangeOf(field, display_units));
  for (const auto label : {ScreenArray::lbModel, ScreenArray::lbHvacType}) Explain(screen, {label}, {});
}

}  // namespace model
