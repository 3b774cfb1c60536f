#pragma once

#include <string>
#include <vector>

#include "help_file/source.h"

namespace help_file {

/// The names of the project's own files.
inline constexpr const char* kProjectFile = "help.hhp";
inline constexpr const char* kContentsFile = "help.hhc";
inline constexpr const char* kIndexFile = "help.hhk";

/// Creates the project of the help file from the sources and the program's tables: topics, contents, index,
/// and the map of context numbers. The source "contents.txt" names the topics in order; the help file opens
/// at the first. "*.css" is copied unchanged.
///
/// Throws SourceError for a mistake in a source, a source missing from the contents, or a field of the screen
/// without a description.
std::vector<File> MakeProject(const std::vector<File>& sources);

}  // namespace help_file
