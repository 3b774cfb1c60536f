#include "windows/system/program.h"

#include <windows.h>

#include <lmcons.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
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

std::string Digits(int number, std::size_t count) {
  const std::string text = std::to_string(number);
  return std::string(count - std::min(count, text.size()), '0') + text;
}

std::string DayOf(const SYSTEMTIME& time) {
  return Digits(time.wYear, 4) + '-' + Digits(time.wMonth, 2) + '-' + Digits(time.wDay, 2);
}

std::string ClockOf(const SYSTEMTIME& time) { return Digits(time.wHour, 2) + ':' + Digits(time.wMinute, 2); }

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

std::string WindowsProgram::User() const {
  wchar_t user[UNLEN + 1] = L"", computer[MAX_COMPUTERNAME_LENGTH + 1] = L"";
  DWORD user_length = ARRAYSIZE(user), computer_length = ARRAYSIZE(computer);
  GetUserNameW(user, &user_length);
  GetComputerNameW(computer, &computer_length);
  return ToUtf8(user) + '@' + ToUtf8(computer);
}

std::string WindowsProgram::Time() const {
  SYSTEMTIME now;
  GetSystemTime(&now);
  return DayOf(now) + 'T' + ClockOf(now) + ':' + Digits(now.wSecond, 2) + 'Z';
}

std::string WindowsProgram::LocalTime() const {
  SYSTEMTIME now, local;
  GetSystemTime(&now);
  SystemTimeToTzSpecificLocalTime(nullptr, &now, &local);
  FILETIME utc_ticks, local_ticks;
  SystemTimeToFileTime(&now, &utc_ticks);
  SystemTimeToFileTime(&local, &local_ticks);
  const auto ticks = [](const FILETIME& time) {
    return static_cast<std::int64_t>((std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime);
  };
  constexpr std::int64_t kTicksPerMinute = 600'000'000;
  const auto minutes = static_cast<int>((ticks(local_ticks) - ticks(utc_ticks)) / kTicksPerMinute);
  const int size = std::abs(minutes);
  return DayOf(local) + ' ' + ClockOf(local) + (minutes < 0 ? " -" : " +") + Digits(size / 60, 2) + ':' +
         Digits(size % 60, 2);
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
