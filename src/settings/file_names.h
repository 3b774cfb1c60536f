#pragma once

#include <map>
#include <string>
#include <string_view>

namespace settings {

/// A name that every file system accepts: characters that Windows forbids, and "%", become "%" and two
/// hexadecimal digits; so does the first letter of a name of a device of Windows ("CON").
std::string FileNameOf(std::string_view name);

/// Names of the files of a snapshot, one for each path of a device: a folder for the network, one for the
/// system and its subsystems, a file for the device. Paths that file systems would not tell apart get
/// different names.
class FileNames {
 public:
  explicit FileNames(char separator) : separator_(separator) {}

  /// Relative to the snapshot's folder. Ask once for each path.
  std::string For(std::string_view path);

  static constexpr const char* kIndex = "index.csv";

 private:
  std::string Distinct(const std::string& above, std::string_view name, std::string_view extension);

  char separator_;
  /// The names in each folder, as a file system that ignores letter case knows them, with the name that each
  /// stands for.
  std::map<std::string, std::string> names_;
};

}  // namespace settings
