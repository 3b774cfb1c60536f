#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Files and folders on this computer. Paths are Windows paths in UTF-8 of any length. Reading never throws:
/// what cannot be read counts as missing.
class Files {
 public:
  virtual ~Files() = default;

  struct Entry {
    std::string name;
    bool is_folder = false;
  };
  struct Folder {
    /// Unique to the folder, and the same for every path to it: links can make loops.
    std::string identity;
    /// In directory order, without "." and "..".
    std::vector<Entry> entries;
  };
  /// Nothing if the folder is missing or must not be read. The path may end with a backslash.
  virtual std::optional<Folder> ReadFolder(const std::string& path) const = 0;

  /// Up to `bytes` bytes from the start of a file; empty if it cannot be read.
  virtual std::string ReadStart(const std::string& path, std::size_t bytes) const = 0;

  /// False for a folder of that name.
  virtual bool FileExists(const std::string& path) const = 0;

  /// Both write the whole file or nothing: beside it first, then renamed. They create missing folders, and
  /// throw the system's error with the path in its text.
  virtual void Write(const std::string& path, std::string_view content) = 0;
  /// Also throws if the file exists.
  virtual void WriteNew(const std::string& path, std::string_view content) = 0;

  /// An open file that only grows.
  class Growing {
   public:
    virtual ~Growing() = default;
    /// Returns when the text is on the disk. Throws the system's error with the path in its text.
    virtual void Append(std::string_view text) = 0;
  };
  /// Creates a file that grows, and missing folders. Throws as WriteNew does.
  virtual std::unique_ptr<Growing> CreateGrowing(const std::string& path) = 0;

  /// Between the names in a path.
  virtual char Separator() const { return '\\'; }
};

}  // namespace platform
