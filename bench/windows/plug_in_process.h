#pragma once

#include <windows.h>

#include <cstddef>
#include <map>
#include <string>

namespace bench {

/// The system resources of a process, counted from outside.
struct Holdings {
  std::size_t handles = 0, gdi_objects = 0, windows = 0;
  std::size_t working_set = 0, peak_working_set = 0;
};
Holdings HoldingsOf(DWORD process);

/// A program beside this one, started without waiting for it.
class StartedProgram {
 public:
  StartedProgram(const std::wstring& program, const std::wstring& arguments);
  ~StartedProgram();
  StartedProgram(const StartedProgram&) = delete;
  StartedProgram& operator=(const StartedProgram&) = delete;

  DWORD id() const { return process_.dwProcessId; }
  DWORD thread() const { return process_.dwThreadId; }
  /// Milliseconds of processor time so far.
  double ProcessorTime() const;

 private:
  PROCESS_INFORMATION process_{};
};

/// The plug-in's window and process, seen from outside. Also finds a hidden window.
class PlugInProcess {
 public:
  PlugInProcess();
  DWORD id() const { return id_; }
  /// Presses a button or option by its caption and waits until it is handled.
  void Press(const wchar_t* caption) const;
  /// Types over the text of a text field. Fields are numbered in the order of the screen.
  void Type(std::size_t field, const wchar_t* text) const;

 private:
  HWND window_ = nullptr;
  DWORD id_ = 0;
  std::map<std::wstring, HWND> buttons_;
};

}  // namespace bench
