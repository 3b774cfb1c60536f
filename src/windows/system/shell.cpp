#include "windows/system/shell.h"

#include <windows.h>

#include <shellapi.h>

#include <utility>

#include "windows/com/failure.h"
#include "windows/com/owners.h"
#include "windows/com/wide_text.h"

namespace windows {
namespace {

class Process : public platform::StartedProgram {
 public:
  explicit Process(Handle process) : process_(std::move(process)) {}
  bool Running() const override { return WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT; }
  bool Succeeded() const override {
    DWORD code = 0;
    return !Running() && GetExitCodeProcess(process_.get(), &code) && code == 0;
  }

 private:
  Handle process_;
};

/// The system adds the extension only to names without a folder.
std::wstring ProgramFile(const std::string& program) {
  const std::size_t folder = program.find_last_of("\\/");
  const bool has_extension = program.find('.', folder == std::string::npos ? 0 : folder) != std::string::npos;
  return ToWide(has_extension ? program : program + ".exe");
}

HWND WindowOf(const std::string& title) { return FindWindowW(nullptr, ToWide(title).c_str()); }

}  // namespace

std::unique_ptr<platform::StartedProgram> WindowsShell::Start(const std::string& program,
                                                              const std::string& arguments, Show show) {
  std::wstring command_line = L"\"" + ProgramFile(program) + L"\" " + ToWide(arguments);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESHOWWINDOW;
  start.wShowWindow = show == Show::MinimizedWithFocus ? SW_SHOWMINIMIZED : SW_SHOWMINNOACTIVE;
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(nullptr, command_line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                      &started))
    com::Check(HRESULT_FROM_WIN32(GetLastError()), program);
  const Handle thread = Own(started.hThread);
  return std::make_unique<Process>(Own(started.hProcess));
}

bool WindowsShell::StartElevated(const std::string& program, const std::string& arguments) {
  const std::wstring file = ProgramFile(program), parameters = ToWide(arguments);
  SHELLEXECUTEINFOW start{};
  start.cbSize = sizeof start;
  // Otherwise this program might end before the system asks the user.
  start.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
  start.hwnd = GetActiveWindow();
  start.lpVerb = L"runas";
  start.lpFile = file.c_str();
  start.lpParameters = parameters.c_str();
  start.nShow = SW_SHOWNORMAL;
  if (ShellExecuteExW(&start)) return true;
  const DWORD reason = GetLastError();
  if (reason != ERROR_CANCELLED) com::Check(HRESULT_FROM_WIN32(reason), program);
  return false;
}

bool WindowsShell::WindowExists(const std::string& title) const { return WindowOf(title) != nullptr; }

void WindowsShell::CloseWindow(const std::string& title) {
  if (const HWND window = WindowOf(title)) PostMessageW(window, WM_CLOSE, 0, 0);
}

void WindowsShell::Pause(std::int32_t milliseconds) { Sleep(static_cast<DWORD>(milliseconds)); }

}  // namespace windows
