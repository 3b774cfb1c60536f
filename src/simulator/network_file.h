#pragma once

#include <string>
#include <string_view>

#include "simulator/installation.h"

namespace simulator {

/// Throws a FileError that names file, line and field. `file` is the name for messages.
stored::Installation ReadInstallation(std::string_view text, const std::string& file);

/// Writes keys in the order of the documentation, without default values. Reading the text restores the same
/// installation.
std::string WriteInstallation(const stored::Installation& installation);

}  // namespace simulator
