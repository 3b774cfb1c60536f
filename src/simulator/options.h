#pragma once

#include <string>
#include <string_view>

namespace simulator {

/// What the command line of the simulator says beside what it has in common with all COM servers.
struct Options {
  /// The network file, as given.
  std::string network_file;
  /// Name this simulator as the object server that plug-ins use.
  bool make_default = false;
  bool help = false;
  bool version = false;
};

/// Reads "/network <file>", "/makedefault", "/help" (also "/?") and "/version"; switches begin with "-" or
/// "/", in any letter case, and a file with blanks stands in double quotes. Throws std::invalid_argument for
/// a switch without its file and for anything unknown.
Options ParseOptions(std::string_view arguments);

}  // namespace simulator
