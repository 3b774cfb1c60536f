#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/installation.h"

namespace simulator {

/// Path texts are UTF-8 on every system.
std::string Utf8(const std::filesystem::path& path);
std::filesystem::path FromUtf8(const std::string& path);

/// Nothing if the file cannot be read.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& path);

/// Keeps the old file until the new one is complete. Throws a FileError.
void ReplaceFile(const std::filesystem::path& path, const std::string& text);

/// The contents of the file at a UTF-8 path; nothing if it cannot be read.
using FileReader = std::function<std::optional<std::string>(const std::string& path)>;

// An external interface file has its program ID in the fourth line, or in the fifth if the fourth is blank:
// eight pairs of hexadecimal digits, separated by one character.

/// 16 upper-case hexadecimal digits from a text file (.XIF). Throws 17008 for any other file, or if it cannot
/// be read or has no program ID.
std::string ProgramIdOfXif(const FileReader& read, const std::string& path);

/// The same for an import, which also accepts a binary file (.XFB) and then reads the .XIF beside it.
std::string ProgramIdOfImport(const FileReader& read, const std::string& path);

/// Throws a FileError that names file, line and field. `file` is the name for messages.
stored::Installation ReadInstallation(std::string_view text, const std::string& file);

/// Writes keys in the order of the documentation, without default values. Reading the text restores the same
/// installation.
std::string WriteInstallation(const stored::Installation& installation);

}  // namespace simulator
