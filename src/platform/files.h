#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Files and folders on this computer. Paths are Windows paths in UTF-8 of any length. Reading does not
/// throw: what cannot be read is not there.
class Files {
 public:
  virtual ~Files() = default;

  struct Entry {
    std::string name;
    bool is_folder = false;
  };
  struct Folder {
    /// The same by whatever path the folder is reached, and no other folder's; links can make loops.
    std::string identity;
    /// In the directory's own order, without "." and "..".
    std::vector<Entry> entries;
  };
  /// Nothing where there is no such folder or it may not be read. The path may end in a backslash.
  virtual std::optional<Folder> ReadFolder(const std::string& path) const = 0;

  /// The first bytes of a file, all of a shorter one; empty where it cannot be read.
  virtual std::string ReadStart(const std::string& path, std::size_t bytes) const = 0;

  /// True for a file, false for a folder of that name.
  virtual bool FileExists(const std::string& path) const = 0;

  /// Makes the file hold these bytes and nothing else. Raises the system's error with the path in its text.
  virtual void Write(const std::string& path, std::string_view content) = 0;
};

}  // namespace platform
