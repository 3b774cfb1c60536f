#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace help_file {

/// A text file: its name without folder, and what stands in it.
struct File {
  std::string name;
  std::string content;
};

/// The files of a folder in the order of their names. Throws where one cannot be read.
std::vector<File> ReadFolder(const std::filesystem::path& folder);
/// Throws where a file cannot be written.
void WriteFolder(const std::filesystem::path& folder, const std::vector<File>& files);

}  // namespace help_file
