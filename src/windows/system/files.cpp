#include "windows/system/files.h"

#include <windows.h>

#include <algorithm>
#include <string_view>

#include "windows/com/failure.h"
#include "windows/com/owners.h"
#include "windows/com/wide_text.h"

namespace windows {
namespace {

/// The path in a form that the system accepts. Longer paths need a prefix, which requires a full path. The
/// limit leaves room for the names in a folder.
std::wstring SystemPath(const std::string& path) {
  constexpr std::size_t kLongestPlain = MAX_PATH - 14;
  const std::wstring wide = ToWide(path);
  if (wide.starts_with(L"\\\\?\\")) return wide;
  // A relative path may be short where the current folder is not.
  std::wstring full(GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  if (full.size() < kLongestPlain) return wide;
  return full.starts_with(L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

Handle Open(const std::wstring& path, DWORD access, DWORD flags) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return Own(CreateFileW(path.c_str(), access, kShareAll, nullptr, OPEN_EXISTING, flags, nullptr));
}

/// Empty if the folder cannot be opened.
std::string IdentityOf(const std::wstring& folder) {
  const Handle opened = Open(folder, FILE_READ_ATTRIBUTES, FILE_FLAG_BACKUP_SEMANTICS);
  BY_HANDLE_FILE_INFORMATION about{};
  if (!opened || !GetFileInformationByHandle(opened.get(), &about)) return {};
  // Some network shares have no file numbers; use the path instead.
  if (about.nFileIndexHigh == 0 && about.nFileIndexLow == 0) return ToUtf8(folder);
  return std::to_string(about.dwVolumeSerialNumber) + ":" + std::to_string(about.nFileIndexHigh) + ":" +
         std::to_string(about.nFileIndexLow);
}

void CheckFor(const std::string& path, BOOL done) {
  com::Check(done ? S_OK : HRESULT_FROM_WIN32(GetLastError()), path);
}

void WriteAll(const Handle& file, const std::string& path, std::string_view content) {
  while (!content.empty()) {
    constexpr std::size_t kMost = 1 << 20;
    DWORD written = 0;
    CheckFor(path, WriteFile(file.get(), content.data(), static_cast<DWORD>(std::min(content.size(), kMost)),
                             &written, nullptr));
    content.remove_prefix(written);
  }
}

class GrowingFile final : public platform::Files::Growing {
 public:
  explicit GrowingFile(const std::string& path)
      : path_(path),
        file_(Own(CreateFileW(SystemPath(path).c_str(), FILE_APPEND_DATA | SYNCHRONIZE, FILE_SHARE_READ,
                              nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr))) {
    CheckFor(path_, file_ != nullptr);
  }
  void Append(std::string_view text) override {
    WriteAll(file_, path_, text);
    CheckFor(path_, FlushFileBuffers(file_.get()));
  }

 private:
  const std::string path_;
  const Handle file_;
};

void WriteWhole(const std::wstring& file_path, const std::string& path, std::string_view content) {
  Handle file = Own(CreateFileW(file_path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  CheckFor(path, file != nullptr);
  WriteAll(file, path, content);
  // Buffered data may not be written until now.
  CheckFor(path, CloseHandle(file.release()));
}

/// A folder that cannot be created makes the file fail.
void CreateFoldersAbove(const std::string& path) {
  for (std::size_t end = path.find_first_of("\\/", 1); end != std::string::npos;
       end = path.find_first_of("\\/", end + 1))
    CreateDirectoryW(SystemPath(path.substr(0, end)).c_str(), nullptr);
}

void WriteAndMove(const std::string& path, std::string_view content, DWORD flags) {
  CreateFoldersAbove(path);
  const std::wstring target = SystemPath(path), beside = SystemPath(path + ".new");
  try {
    WriteWhole(beside, path, content);
    CheckFor(path, MoveFileExW(beside.c_str(), target.c_str(), flags | MOVEFILE_WRITE_THROUGH));
  } catch (const platform::Error&) {
    DeleteFileW(beside.c_str());
    throw;
  }
}

/// A move may replace a read-only file, depending on the system.
void CheckWritable(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(SystemPath(path).c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
    com::Check(HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED), path);
}

struct SearchCloser {
  void operator()(HANDLE search) const noexcept { FindClose(search); }
};

}  // namespace

std::optional<platform::Files::Folder> WindowsFiles::ReadFolder(const std::string& path) const {
  if (path.empty()) return std::nullopt;
  // The root of a drive needs its backslash.
  const std::wstring folder = SystemPath(path.ends_with('\\') ? path : path + '\\');
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW((folder + L'*').c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return std::nullopt;
  const std::unique_ptr<void, SearchCloser> closer(search);
  Folder result{IdentityOf(folder), {}};
  if (result.identity.empty()) return std::nullopt;
  do {
    const std::wstring_view name = found.cFileName;
    if (name != L"." && name != L"..")
      result.entries.push_back({ToUtf8(name), (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
  } while (FindNextFileW(search, &found));
  return result;
}

std::string WindowsFiles::ReadStart(const std::string& path, std::size_t bytes) const {
  const Handle file = Open(SystemPath(path), GENERIC_READ, FILE_ATTRIBUTE_NORMAL);
  std::string start(bytes, '\0');
  DWORD read = 0;
  if (!file || !ReadFile(file.get(), start.data(), static_cast<DWORD>(bytes), &read, nullptr)) return {};
  start.resize(read);
  return start;
}

bool WindowsFiles::FileExists(const std::string& path) const {
  const DWORD attributes = GetFileAttributesW(SystemPath(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

void WindowsFiles::Write(const std::string& path, std::string_view content) {
  CheckWritable(path);
  WriteAndMove(path, content, MOVEFILE_REPLACE_EXISTING);
}

std::unique_ptr<platform::Files::Growing> WindowsFiles::CreateGrowing(const std::string& path) {
  CreateFoldersAbove(path);
  return std::make_unique<GrowingFile>(path);
}

void WindowsFiles::WriteNew(const std::string& path, std::string_view content) {
  WriteAndMove(path, content, 0);
}

}  // namespace windows
