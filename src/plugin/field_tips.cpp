#include "plugin/field_tips.h"

#include <algorithm>
#include <string>

#include "model/catalogue.h"
#include "model/field_guide.h"
#include "plugin/display_settings.h"
#include "text/numbers.h"

namespace plugin {
namespace {

using model::FieldPlace;
using model::UnitLabel;

std::string UnitOf(const FieldPlace& field, int display_units) {
  // The correction of the humidity stands beside a temperature unit, and is none.
  if (field.control == model::txtNvi(10)) return " %";
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
  const auto rows = model::Catalogue();
  const auto row = std::ranges::find(rows, field.control, &model::CatalogueRow::control);
  if (row == rows.end() || !row->limits) return {};
  const model::CatalogueLimits& limits = *row->limits;
  const bool metric = display_units == 0;
  return "\r\n" + text::ShortestText(metric ? limits.si_min : limits.us_min) + " to " +
         text::ShortestText(metric ? limits.si_max : limits.us_max) + UnitOf(field, display_units);
}

void Explain(const model::ConfigurationScreen& screen, model::ControlRef control, const std::string& range) {
  if (const model::FieldGuide* guide = model::GuideOf(control))
    screen.Find(control)->SetToolTip(std::string(guide->meaning) + range);
}

}  // namespace

void ShowFieldTips(model::ConfigurationScreen& screen, int display_units) {
  for (const model::FramePlace& frame : model::Frames())
    for (const FieldPlace& field : frame.fields)
      Explain(screen, field.control, RangeOf(field, display_units));
  for (const auto label : {model::ScreenArray::lbModel, model::ScreenArray::lbHvacType})
    Explain(screen, {label}, {});
}

}  // namespace plugin
