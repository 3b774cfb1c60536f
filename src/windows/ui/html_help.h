#pragma once

#include <windows.h>

#include <string>

namespace windows {

/// The system's viewer of help files, which is loaded when it is first asked for.
class HtmlHelp {
 public:
  /// Opens the file at the topic of a context number, or at its first one for 0, in a window of its own.
  /// False where the system has no viewer or the viewer cannot show the file.
  bool ShowContext(const std::wstring& file, DWORD context);
  /// Closes the help windows; the viewer wants that before the program ends.
  void CloseAll();

 private:
  using Function = HWND(WINAPI*)(HWND caller, const wchar_t* file, UINT command, DWORD_PTR data);
  Function call_ = nullptr;
};

}  // namespace windows
