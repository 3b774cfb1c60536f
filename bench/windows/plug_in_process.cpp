#include "plug_in_process.h"

#include <psapi.h>

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

}  // namespace

Holdings HoldingsOf(DWORD process) {
  Holdings holdings;
  const HANDLE opened = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process);
  if (!opened) throw std::runtime_error("the process cannot be looked at");
  GetProcessHandleCount(opened, &holdings.handles);
  holdings.gdi_objects = GetGuiResources(opened, GR_GDIOBJECTS);
  holdings.user_objects = GetGuiResources(opened, GR_USEROBJECTS);
  PROCESS_MEMORY_COUNTERS_EX memory{};
  GetProcessMemoryInfo(opened, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory);
  holdings.private_bytes = memory.PrivateUsage;
  holdings.peak_working_set = memory.PeakWorkingSetSize;
  CloseHandle(opened);
  return holdings;
}

PlugInProcess::PlugInProcess() : window_(FindWindowW(nullptr, L"Korvell QM5R-FC PIR Configure")) {
  if (!window_) throw std::runtime_error("the plug-in has no window");
  GetWindowThreadProcessId(window_, &id_);
}

bool PlugInProcess::Runs() const { return IsWindow(window_) != 0; }

void PlugInProcess::Press(const wchar_t* caption) const {
  for (const HWND button : AllControls(window_, L"Button")) {
    wchar_t text[64] = L"";
    GetWindowTextW(button, text, 64);
    if (lstrcmpW(text, caption) == 0) {
      SendMessageW(button, BM_CLICK, 0, 0);
      return;
    }
  }
  throw std::runtime_error("no such button");
}

void PlugInProcess::Edit(bool all, wchar_t digit) const {
  for (const HWND field : AllControls(window_, L"Edit")) {
    if (GetWindowLongW(field, GWL_STYLE) & ES_READONLY) continue;
    SendMessageW(field, EM_SETSEL, 0, -1);
    SendMessageW(field, WM_CHAR, '2', 1);
    SendMessageW(field, WM_CHAR, static_cast<WPARAM>(digit), 1);
    if (!all) return;
  }
}

}  // namespace bench
