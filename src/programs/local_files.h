#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "platform/error.h"
#include "platform/files.h"

/// Files of a computer without Windows; paths are its own.
class LocalFiles : public platform::Files {
 public:
  std::optional<Folder> ReadFolder(const std::string& path) const override {
    std::error_code error;
    Folder folder{std::filesystem::weakly_canonical(path, error).string(), {}};
    for (std::filesystem::directory_iterator entry(path, error), end; !error && entry != end;
         entry.increment(error))
      folder.entries.push_back({entry->path().filename().string(), entry->is_directory()});
    return error ? std::nullopt : std::optional(std::move(folder));
  }

  std::string ReadStart(const std::string& path, std::size_t bytes) const override {
    std::ifstream file(path, std::ios::binary);
    std::string text(bytes, '\0');
    file.read(text.data(), static_cast<std::streamsize>(bytes));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
  }

  bool FileExists(const std::string& path) const override {
    std::error_code error;
    return std::filesystem::exists(path, error) && !std::filesystem::is_directory(path, error);
  }

  void Write(const std::string& path, std::string_view content) override {
    WriteBeside(path, content);
    std::error_code error;
    std::filesystem::rename(path + kBeside, path, error);
    if (error) Fail(path, error.message());
  }

  void WriteNew(const std::string& path, std::string_view content) override {
    WriteBeside(path, content);
    std::error_code error, ignored;
    std::filesystem::create_hard_link(path + kBeside, path, error);  // fails if the file exists
    std::filesystem::remove(path + kBeside, ignored);
    if (error) Fail(path, error.message());
  }

  std::unique_ptr<Growing> CreateGrowing(const std::string& path) override {
    struct File : Growing {
      explicit File(const std::string& name)
          : path(name),
            descriptor(open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC, 0644)) {
        if (descriptor < 0) Raise();
      }
      ~File() override { close(descriptor); }
      void Append(std::string_view text) override {
        if (write(descriptor, text.data(), text.size()) != static_cast<ssize_t>(text.size()) ||
            fsync(descriptor) != 0)
          Raise();
      }
      [[noreturn]] void Raise() const {
        throw platform::Error(75, "Files", path + ": " + std::generic_category().message(errno));
      }
      const std::string path;
      const int descriptor;
    };
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    return std::make_unique<File>(path);
  }

  char Separator() const override { return '/'; }

 private:
  static constexpr const char* kBeside = ".new";

  static void WriteBeside(const std::string& path, std::string_view content) {
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    std::ofstream file(path + kBeside, std::ios::binary | std::ios::trunc);
    file << content;
    file.close();
    if (!file) Fail(path, "cannot be written");
  }

  [[noreturn]] static void Fail(const std::string& path, const std::string& reason) {
    std::error_code ignored;
    std::filesystem::remove(path + kBeside, ignored);
    throw platform::Error(75, "Files", path + ": " + reason);
  }
};
