// qm5r.exe: settings of thermostats as files, on the command line.

#include <windows.h>

#include <shlobj.h>

#include <atomic>
#include <iostream>
#include <optional>
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

double Seconds() { return static_cast<double>(GetTickCount64()) / 1000; }

std::atomic<bool> is_stopped = false;

/// Ends the command in order; a second Ctrl-C ends the process.
BOOL WINAPI Stop(DWORD event) { return event == CTRL_C_EVENT && !is_stopped.exchange(true) ? TRUE : FALSE; }

/// Shared by all users of the computer.
std::string RecordsFolder() {
  wchar_t folder[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder);
  return windows::ToUtf8(folder) + "\\Korvell\\QM5R\\Records";
}

bool IsConsole(DWORD which) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(which), &mode) != 0;
}

std::optional<std::string> Ask(const std::string& question) {
  if (!IsConsole(STD_INPUT_HANDLE)) return std::nullopt;
  std::cerr << question << std::flush;
  std::string answer;
  return std::getline(std::cin, answer) ? std::optional(answer) : std::nullopt;
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
    SetConsoleCtrlHandler(Stop, TRUE);
    const windows::WindowsProgram program;
    qm5r::Computer computer{ObjectServer,
                            files,
                            std::cout,
                            std::cerr,
                            IsConsole(STD_ERROR_HANDLE),
                            program.User(),
                            [&] { return program.Time(); },
                            [&] { return program.LocalTime(); },
                            Ask,
                            RecordsFolder(),
                            [] { return is_stopped.load(); },
                            Seconds};
    return qm5r::Run(parsed.options, computer);
  } catch (const std::exception& failure) {
    std::cerr << "qm5r: " << failure.what() << '\n';
  }
  return qm5r::kFailed;
}
