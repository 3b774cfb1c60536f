#pragma once

#include "platform/files.h"

namespace windows {

/// The file system. Works on any thread.
class WindowsFiles : public platform::Files {
 public:
  std::optional<Folder> ReadFolder(const std::string& path) const override;
  std::string ReadStart(const std::string& path, std::size_t bytes) const override;
  bool FileExists(const std::string& path) const override;
  void Write(const std::string& path, std::string_view content) override;
  void WriteNew(const std::string& path, std::string_view content) override;
  std::unique_ptr<Growing> CreateGrowing(const std::string& path) override;
};

}  // namespace windows
