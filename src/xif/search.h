#pragma once

#include <string>

#include "platform/files.h"

namespace xif {

/// The program ID that an external interface file names: 16 hexadecimal digits in the letter case of the
/// file, or, of a text program ID, its 8 characters followed by 8 blanks. Empty where the path does not end
/// in ".XIF", in either letter case, and where the file cannot be read or holds none.
std::string ReadXifProgramId(const platform::Files& files, const std::string& path);

/// The full path of the first interface file, below a folder that is given with a backslash at its end, with
/// the wanted program ID; empty where there is none. A folder's own files come before its subfolders, all in
/// directory order; folders whose name begins with "." are left out.
///
/// The wanted program ID is turned into capitals, in the caller's variable too. A file that writes its
/// program ID in small letters is therefore never found; deliberate.
std::string FindXifFile(const platform::Files& files, const std::string& folder, std::string& program_id);

}  // namespace xif
