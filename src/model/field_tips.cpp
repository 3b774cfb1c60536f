#include "model/field_tips.h"

#include <algorithm>
#include <string>

#include "model/catalogue.h"
#include "text/numbers.h"

namespace model {
namespace {

/// "4.5 to 32 ºC" on a line of its own; empty where the field has no limits.
std::string RangeOf(const FieldRow& field, int display_units) {
  const auto rows = Catalogue();
  const auto row = std::ranges::find(rows, field.control, &CatalogueRow::control);
  if (row == rows.end() || !row->limits) return {};
  const CatalogueLimits& limits = *row->limits;
  const bool metric = display_units == 0;
  const std::string unit = UnitText(field.unit, display_units);
  return "\r\n" + text::ShortestText(metric ? limits.si_min : limits.us_min) + " to " +
         text::ShortestText(metric ? limits.si_max : limits.us_max) + (unit.empty() ? "" : " " + unit);
}

}  // namespace

void ShowFieldTips(ConfigurationScreen& screen, int display_units) {
  for (const FieldRow& field : Fields())
    screen.Find(field.control)->SetToolTip(std::string(field.meaning) + RangeOf(field, display_units));
}

}  // namespace model
