#pragma once

#include <string>
#include <vector>

#include "help_file/source.h"
#include "model/catalogue.h"

namespace help_file {

/// Where a field is on the screen. Fields above the tabs have no page and no label.
struct Place {
  int page = -1;
  std::string frame;
  std::string label;
};
Place PlaceOf(model::ControlRef control);

/// The field's frame and label.
std::string TitleOf(model::ControlRef control);

/// Null if the catalogue does not have the field.
const model::CatalogueRow* RowOf(model::ControlRef control);

/// The range in both unit systems, or once if they agree; empty for a field without limits.
std::string TopicRange(model::ControlRef control);

/// The rows of the field's table of facts: range, rounding, names in messages and in the device.
std::string FactsOf(const FieldSource& field);

/// The table of the list's items; empty for other fields. Throws SourceError if the source lacks an item's
/// meaning.
std::string ChoicesOf(const FieldSource& field);

std::string Escaped(std::string_view text);

/// The names of the project's own files.
inline constexpr const char* kProjectFile = "help.hhp";
inline constexpr const char* kContentsFile = "help.hhc";
inline constexpr const char* kIndexFile = "help.hhk";

/// Makes the project of the help file from the sources and the program's tables: topics, contents, index, and
/// the map of context numbers. The source "contents.txt" names the topics in order; the help file opens at
/// the first. "*.css" is copied unchanged.
///
/// Throws SourceError for a mistake in a source, a source that the contents do not name, or a field of the
/// screen that no source describes.
std::vector<File> MakeProject(const std::vector<File>& sources);

}  // namespace help_file
