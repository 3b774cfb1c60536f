#pragma once

#include <string>

#include "platform/files.h"

namespace xif {

/// The program ID that an external interface file names: 16 hexadecimal digits in the letter case of the
/// file, or, of a text program ID, its 8 characters followed by 8 blanks. Empty where the path does not end
/// in ".XIF", in either letter case, and where the file cannot be read or holds none.
std::string ReadXifProgramId(const platform::Files& files, const std::string& path);

}  // namespace xif
