#pragma once

#include <string>

#include "platform/files.h"

namespace xif {

/// The program ID in an external interface file: 16 hexadecimal digits in the file's letter case, or a text
/// program ID's 8 characters followed by 8 blanks. Empty if the path does not end in ".XIF" (in any letter
/// case), or if the file cannot be read or has none.
std::string ReadXifProgramId(const platform::Files& files, const std::string& path);

/// The full path of the first interface file with the wanted program ID, below a folder given with a
/// backslash at the end; empty if there is none. A folder's files come before its subfolders, all in
/// directory order. Folders whose names begin with "." are skipped.
///
/// Turns the wanted program ID into capitals, also in the caller's variable. A file with its program ID in
/// small letters is therefore never found, deliberately.
std::string FindXifFile(const platform::Files& files, const std::string& folder, std::string& program_id);

}  // namespace xif
