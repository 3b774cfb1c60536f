#include "windows/system/program.h"

#include <windows.h>

#include <array>
#include <vector>

#include "windows/com/wide_text.h"

namespace windows {
namespace {

std::wstring ModulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

}  // namespace

std::string WindowsProgram::StringResource(int number) const {
  // Without a buffer the call returns a pointer to the text in the executable, whatever its length.
  const wchar_t* text = nullptr;
  const int length =
      LoadStringW(GetModuleHandleW(nullptr), static_cast<UINT>(number), reinterpret_cast<wchar_t*>(&text), 0);
  return length > 0 ? ToUtf8(std::wstring_view(text, static_cast<std::size_t>(length))) : std::string();
}

platform::Program::Version WindowsProgram::FileVersion() const {
  const std::wstring path = ModulePath();
  const DWORD size = GetFileVersionInfoSizeW(path.c_str(), nullptr);
  if (size == 0) return {};
  std::vector<std::byte> block(size);
  VS_FIXEDFILEINFO* info = nullptr;
  UINT length = 0;
  if (!GetFileVersionInfoW(path.c_str(), 0, size, block.data()) ||
      !VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&info), &length) || !info)
    return {};
  // Major and minor are the first two of the four numbers, the revision is the last.
  return {HIWORD(info->dwFileVersionMS), LOWORD(info->dwFileVersionMS), LOWORD(info->dwFileVersionLS)};
}

std::string WindowsProgram::Directory() const {
  const std::wstring path = ModulePath();
  return ToUtf8(path.substr(0, path.find_last_of(L'\\')));
}

std::string WindowsProgram::ExecutableName() const {
  const std::wstring path = ModulePath();
  const std::wstring file = path.substr(path.find_last_of(L'\\') + 1);
  return ToUtf8(file.substr(0, file.find_last_of(L'.')));
}

std::string WindowsProgram::TimeOfDay() const {
  std::array<wchar_t, 80> text{};
  const int length =
      GetTimeFormatW(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, text.data(), static_cast<int>(text.size()));
  return length > 0 ? ToUtf8(text.data()) : std::string();
}

void ShowFatalFailure(std::string_view title, std::string_view reason) {
  MessageBoxW(nullptr, ToWide(reason).c_str(), ToWide(title).c_str(),
              MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
}

std::string CommandLineArguments() {
  const std::wstring line = GetCommandLineW();
  std::size_t end = 0;
  if (!line.empty() && line[0] == L'"')
    end = line.find(L'"', 1) == std::wstring::npos ? line.size() : line.find(L'"', 1) + 1;
  else
    end = line.find_first_of(L" \t") == std::wstring::npos ? line.size() : line.find_first_of(L" \t");
  return ToUtf8(std::wstring_view(line).substr(end));
}

}  // namespace windows
