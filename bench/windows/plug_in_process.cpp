#include "plug_in_process.h"

#include <commctrl.h>
#include <psapi.h>
#include <winternl.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <vector>

namespace bench {
namespace {

std::vector<HWND> AllControls(HWND window, const wchar_t* window_class) {
  struct Search {
    const wchar_t* window_class;
    std::vector<HWND> found;
  } search{window_class, {}};
  EnumChildWindows(
      window,
      [](HWND child, LPARAM data) -> BOOL {
        auto& sought = *reinterpret_cast<Search*>(data);
        wchar_t name[64] = L"";
        GetClassNameW(child, name, 64);
        if (lstrcmpiW(name, sought.window_class) == 0) sought.found.push_back(child);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

// Wine lacks GetProcessHandleCount and GetGuiResources, so this reads the system's own tables, which have the
// same layout in Wine and Windows.
std::size_t HandlesOf(DWORD process) {
  constexpr auto kHandles = static_cast<SYSTEM_INFORMATION_CLASS>(16);
  struct Entry {
    ULONG process;
    UCHAR type, flags;
    USHORT handle;
    PVOID object;
    ULONG access;
  };
  std::vector<std::byte> table(1 << 20);
  ULONG needed = 0;
  while (NtQuerySystemInformation(kHandles, table.data(), static_cast<ULONG>(table.size()), &needed) != 0) {
    if (table.size() > 1 << 28) throw std::runtime_error("the handles cannot be counted");
    table.resize(table.size() * 2);
  }
  ULONG count = 0;
  std::memcpy(&count, table.data(), sizeof count);
  const auto* entries = reinterpret_cast<const Entry*>(table.data() + alignof(Entry));
  return static_cast<std::size_t>(
      std::count_if(entries, entries + count, [&](const Entry& each) { return each.process == process; }));
}

std::size_t GdiObjectsOf(HANDLE process) {
  constexpr std::size_t kObjects = 0x10000, kTableInPeb = sizeof(void*) == 8 ? 0xF8 : 0x94;
  struct Entry {
    ULONG64 object;
    USHORT owner, count, unique;
    UCHAR type, flags;
    ULONG64 user_data;
  };
  PROCESS_BASIC_INFORMATION about{};
  NtQueryInformationProcess(process, ProcessBasicInformation, &about, sizeof about, nullptr);
  void* place = nullptr;
  std::vector<Entry> table(kObjects);
  SIZE_T read = 0;
  const auto* peb = reinterpret_cast<const std::byte*>(about.PebBaseAddress);
  if (!ReadProcessMemory(process, peb + kTableInPeb, &place, sizeof place, &read) ||
      !ReadProcessMemory(process, place, table.data(), table.size() * sizeof(Entry), &read))
    throw std::runtime_error("the GDI objects cannot be counted");
  return static_cast<std::size_t>(
      std::ranges::count_if(table, [](const Entry& each) { return each.type != 0; }));
}

std::size_t WindowsOf(DWORD process) {
  struct Count {
    DWORD process;
    std::size_t windows = 0;
  } count{process};
  EnumWindows(
      [](HWND window, LPARAM data) -> BOOL {
        auto& counted = *reinterpret_cast<Count*>(data);
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner != counted.process) return TRUE;
        ++counted.windows;
        EnumChildWindows(
            window,
            [](HWND, LPARAM inner) -> BOOL { return ++reinterpret_cast<Count*>(inner)->windows, TRUE; },
            data);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&count));
  return count.windows;
}

}  // namespace

Holdings HoldingsOf(DWORD process) {
  const HANDLE opened = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process);
  if (!opened) throw std::runtime_error("the process cannot be opened");
  Holdings holdings;
  holdings.handles = HandlesOf(process);
  holdings.gdi_objects = GdiObjectsOf(opened);
  holdings.windows = WindowsOf(process);
  PROCESS_MEMORY_COUNTERS memory{};
  GetProcessMemoryInfo(opened, &memory, sizeof memory);
  holdings.working_set = memory.WorkingSetSize;
  holdings.peak_working_set = memory.PeakWorkingSetSize;
  CloseHandle(opened);
  return holdings;
}

StartedProgram::StartedProgram(const std::wstring& program, const std::wstring& arguments) {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::wstring folder(path, static_cast<std::size_t>(wcsrchr(path, L'\\') + 1 - path));
  std::wstring command = L"\"" + folder + program + L"\" " + arguments;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process_))
    throw std::runtime_error("a program beside this one cannot be started");
}

StartedProgram::~StartedProgram() {
  CloseHandle(process_.hThread);
  CloseHandle(process_.hProcess);
}

double StartedProgram::ProcessorTime() const {
  FILETIME made, ended, kernel, user;
  GetProcessTimes(process_.hProcess, &made, &ended, &kernel, &user);
  const auto milliseconds = [](const FILETIME& time) {
    return static_cast<double>(static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime) /
           1e4;
  };
  return milliseconds(kernel) + milliseconds(user);
}

PlugInProcess::PlugInProcess() : window_(FindWindowW(L"FormSurface", L"Korvell QM5R-FC PIR Configure")) {
  if (!window_) throw std::runtime_error("the plug-in has no window");
  GetWindowThreadProcessId(window_, &id_);
  for (const HWND button : AllControls(window_, L"Button")) {
    wchar_t caption[64] = L"";
    GetWindowTextW(button, caption, 64);
    buttons_[caption] = button;
  }
}

void PlugInProcess::Press(const wchar_t* caption) const {
  SendMessageW(buttons_.at(caption), BM_CLICK, 0, 0);
}

void PlugInProcess::Type(std::size_t field, const wchar_t* text) const {
  // The plug-in makes a page only when it is first shown.
  SendMessageW(window_, RegisterWindowMessageW(L"FormSurface.MakeAllWindows"), 0, 0);
  const HWND tabs = FindWindowExW(window_, nullptr, WC_TABCONTROLW, nullptr);
  const HWND edit = AllControls(tabs, L"Edit").at(field);
  SendMessageW(edit, EM_SETSEL, 0, -1);
  for (; *text; ++text) SendMessageW(edit, WM_CHAR, *text, 1);
}

}  // namespace bench
