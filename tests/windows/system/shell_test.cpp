#include "windows/system/shell.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "platform/error.h"

namespace {

using platform::Shell;

/// Waits until the program has ended; its name tells which one did not.
void AwaitEnd(windows::WindowsShell& shell, const platform::StartedProgram& program, const char* name) {
  for (int i = 0; i < 500 && program.Running(); ++i) shell.Pause(20);
  EXPECT_FALSE(program.Running()) << name;
}

TEST(Shell, StartsAProgramByNameOrPath) {
  windows::WindowsShell shell;
  CreateDirectoryW(L"C:\\With blank.d", nullptr);
  ASSERT_TRUE(CopyFileW(L"C:\\windows\\system32\\cmd.exe", L"C:\\With blank.d\\tool.exe", FALSE));
  // What a path without quotes would find first.
  ASSERT_TRUE(CopyFileW(L"C:\\windows\\system32\\winver.exe", L"C:\\With.exe", FALSE));
  for (const char* program : {"cmd", "C:\\With blank.d\\tool", "C:\\With blank.d\\tool.exe"}) {
    const auto done =
        shell.Start(program, "/c mkdir \"C:\\With blank.d\\made here\"", Shell::Show::MinimizedWithFocus);
    AwaitEnd(shell, *done, program);
    EXPECT_TRUE(RemoveDirectoryW(L"C:\\With blank.d\\made here")) << program;
  }
  EXPECT_THROW(shell.Start("C:\\With blank.d\\none", "", Shell::Show::MinimizedWithFocus), platform::Error);
  DeleteFileW(L"C:\\With.exe");
}

TEST(Shell, AsksTheWindowOfATitleToClose) {
  windows::WindowsShell shell;
  constexpr const char* kTitle = "QM5R \u00E4\u03A9";
  const HWND window = CreateWindowW(L"STATIC", L"QM5R \u00E4\u03A9", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                                    nullptr, nullptr);
  EXPECT_TRUE(shell.WindowExists(kTitle));
  EXPECT_FALSE(shell.WindowExists("QM5R"));
  shell.CloseWindow("QM5R");
  shell.CloseWindow(kTitle);
  MSG message{};
  EXPECT_TRUE(PeekMessageW(&message, window, WM_CLOSE, WM_CLOSE, PM_REMOVE));
  DestroyWindow(window);
  EXPECT_FALSE(shell.WindowExists(kTitle));
}

}  // namespace
