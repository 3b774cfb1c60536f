#pragma once

#include <functional>
#include <optional>
#include <string>

/// External interface files, as far as the simulation needs them: the program ID, which stands in the fourth
/// line as eight pairs of hexadecimal digits with one character between them, or in the fifth line where the
/// fourth is blank.
namespace simulator {

/// The contents of the file at a UTF-8 path; nothing where it cannot be read.
using FileReader = std::function<std::optional<std::string>(const std::string& path)>;

/// 16 upper-case hexadecimal digits from a text file (.XIF). Raises 17008 for any other file and for one that
/// cannot be read or has no program ID.
std::string ProgramIdOfXif(const FileReader& read, const std::string& path);

/// The same for an import, which also takes a binary file (.XFB). Its program ID is that of the .XIF beside
/// it, without which it is refused.
std::string ProgramIdOfImport(const FileReader& read, const std::string& path);

}  // namespace simulator
