#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace simulator {

/// Paths as texts are UTF-8 on every system.
std::string Utf8(const std::filesystem::path& path);
std::filesystem::path FromUtf8(const std::string& path);

/// Nothing where there is no such file or it cannot be read.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& path);

/// The old file stays whole until the new one is; raises a FileError.
void ReplaceFile(const std::filesystem::path& path, const std::string& text);

/// The contents of the file at a UTF-8 path; nothing where it cannot be read.
using FileReader = std::function<std::optional<std::string>(const std::string& path)>;

// An external interface file has its program ID on the fourth line, or on the fifth if the fourth is blank:
// eight pairs of hexadecimal digits with one character between them.

/// 16 upper-case hexadecimal digits from a text file (.XIF). Raises 17008 for any other file and for one that
/// cannot be read or has no program ID.
std::string ProgramIdOfXif(const FileReader& read, const std::string& path);

/// The same for an import, which also takes a binary file (.XFB). Its program ID is that of the .XIF beside
/// it, without which it is refused.
std::string ProgramIdOfImport(const FileReader& read, const std::string& path);

}  // namespace simulator
