#pragma once

#include <string>
#include <vector>

#include "help_file/source.h"
#include "model/catalogue.h"

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

/// The names of the project's own files.
inline constexpr const char* kProjectFile = "help.hhp";
inline constexpr const char* kContentsFile = "help.hhc";
inline constexpr const char* kIndexFile = "help.hhk";

/// The project of the help file, made from the sources and the tables of the program: topics, contents,
/// index, and the map of context numbers. One source, "contents.txt", names the topics in their order, the
/// first of which is the one that the help file opens at; "*.css" is taken as it stands.
///
/// Throws SourceError for a mistake in a source, a source that the contents do not name, and a field of the
/// screen that no source describes.
std::vector<File> MakeProject(const std::vector<File>& sources);

}  // namespace help_file
