#pragma once

#include <string>
#include <string_view>

namespace simulator {

/// The simulator's own command line, besides the switches of all COM servers.
struct Options {
  std::string network_file;
  /// Make this simulator the object server that plug-ins use.
  bool make_default = false;
  bool help = false;
  bool version = false;
};

/// Parses "/network <file>", "/makedefault", "/help" (also "/?") and "/version". Switches begin with "-" or
/// "/", in any letter case; a path with blanks needs double quotes. Throws std::invalid_argument for a
/// missing file and for unknown words.
Options ParseOptions(std::string_view arguments);

}  // namespace simulator
