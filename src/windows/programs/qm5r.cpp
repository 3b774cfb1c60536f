// qm5r.exe: settings of thermostats as files, on the command line.

#include <windows.h>

#include <lmcons.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "qm5r/commands.h"
#include "windows/com/local_server.h"
#include "windows/com/wide_text.h"
#include "windows/system/files.h"
#include "windows/system/program.h"
#include "windows/system/registry.h"

// The program itself expands "*", which stands for devices as well. The C runtime's name.
extern "C" {
int _dowildcard = 0;
}

namespace {

std::string User() {
  wchar_t user[UNLEN + 1] = L"", computer[MAX_COMPUTERNAME_LENGTH + 1] = L"";
  DWORD user_length = ARRAYSIZE(user), computer_length = ARRAYSIZE(computer);
  GetUserNameW(user, &user_length);
  GetComputerNameW(computer, &computer_length);
  return windows::ToUtf8(user) + '@' + windows::ToUtf8(computer);
}

std::string Digits(int number, std::size_t count) {
  const std::string text = std::to_string(number);
  return std::string(count - std::min(count, text.size()), '0') + text;
}

std::string DayOf(const SYSTEMTIME& time) {
  return Digits(time.wYear, 4) + '-' + Digits(time.wMonth, 2) + '-' + Digits(time.wDay, 2);
}

std::string ClockOf(const SYSTEMTIME& time) { return Digits(time.wHour, 2) + ':' + Digits(time.wMinute, 2); }

std::string Time() {
  SYSTEMTIME now;
  GetSystemTime(&now);
  return DayOf(now) + 'T' + ClockOf(now) + ':' + Digits(now.wSecond, 2) + 'Z';
}

std::string LocalTime() {
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

double Seconds() { return static_cast<double>(GetTickCount64()) / 1000; }

bool IsConsole(DWORD which) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(which), &mode) != 0;
}

platform::LateBoundPtr ObjectServer() {
  windows::WindowsRegistry registry;
  return windows::MakeObjectServer(registry);
}

std::string VersionText() {
  const auto version = windows::WindowsProgram().FileVersion();
  return std::to_string(version.major) + '.' + std::to_string(version.minor) + '.' +
         std::to_string(version.revision);
}

}  // namespace

int wmain(int count, wchar_t** words) {
  SetConsoleOutputCP(CP_UTF8);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(windows::ToUtf8(words[i]));
  const qm5r::ParsedCommandLine parsed = qm5r::ParseCommandLine(std::move(arguments), VersionText(), false);
  if (!parsed.run) {
    (parsed.exit_code == 0 ? std::cout : std::cerr) << parsed.message;
    return parsed.exit_code;
  }
  try {
    const windows::com::Apartment apartment;
    windows::WindowsFiles files;
    qm5r::Computer computer{ObjectServer, files, std::cout, std::cerr, IsConsole(STD_ERROR_HANDLE),
                            User(),       Time,  LocalTime, Seconds};
    return qm5r::Run(parsed.options, computer);
  } catch (const std::exception& failure) {
    std::cerr << "qm5r: " << failure.what() << '\n';
  }
  return qm5r::kFailed;
}
