#pragma once

#include <string>
#include <string_view>

#include "simulator/installation.h"

namespace simulator {

/// Raises a FileError that names file, line and field. `file` only names the file in messages.
stored::Installation ReadInstallation(std::string_view text, const std::string& file);

/// Keys in the order of the documentation; what has its default value is left out. Reading the text gives the
/// same installation again.
std::string WriteInstallation(const stored::Installation& installation);

}  // namespace simulator
