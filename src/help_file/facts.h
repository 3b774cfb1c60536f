#pragma once

#include <string>

#include "help_file/source.h"
#include "model/catalogue.h"

/// What the tables of the program say about a field, as HTML.
namespace help_file {

/// Where the field stands on the screen; without a label or page for what stands over the tabs.
struct Place {
  int page = -1;
  std::string frame;
  std::string label;
};
Place PlaceOf(model::ControlRef control);

/// What the field is called: its frame and its label.
std::string TitleOf(model::ControlRef control);

/// Null for a field that the catalogue does not hold.
const model::CatalogueRow* RowOf(model::ControlRef control);

/// The range in both unit systems, or once where it is the same; empty for a field without limits.
std::string RangeOf(model::ControlRef control);

/// The rows of the field's table of facts: range, rounding, its names in messages and in the device.
std::string FactsOf(const FieldSource& field);

/// The table of the items of the field's list; empty for other fields. Throws SourceError for an item whose
/// meaning the source does not tell.
std::string ChoicesOf(const FieldSource& field);

std::string Escaped(std::string_view text);

}  // namespace help_file
