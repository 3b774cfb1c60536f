#pragma once

#include <vector>

#include "help_file/files.h"

namespace help_file {

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
