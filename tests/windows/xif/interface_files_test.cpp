#include <windows.h>

#include <dlgs.h>
#include <gtest/gtest.h>

#include "headless/desktop.h"
#include "ui/form.h"
#include "windows/com/wide_text.h"
#include "windows/system/files.h"
#include "windows/system/registry.h"
#include "windows/system/shell.h"
#include "windows/ui/desktop.h"
#include "xif/interface_files.h"

namespace {

constexpr const char* kId = "8000D3550004041D";
const std::string kFolder = "C:\\QM5R LonWorks\\Import \u00C4\u03A9", kXif = kFolder + "\\A b.xif",
                  kXfb = kFolder + "\\A b.XFB";

/// The real computer with the converter where the machine's settings say that it is, in less time.
class InterfaceFilesTest : public testing::Test {
 protected:
  struct Shell : windows::WindowsShell {
    void Pause(std::int32_t time) override { WindowsShell::Pause(quick ? 1 : time); }
    bool quick = false;
  };
  InterfaceFilesTest() {
    for (const std::string& folder :
         {std::string("C:\\QM5R LonWorks"), std::string("C:\\QM5R LonWorks\\bin"), kFolder})
      CreateDirectoryW(windows::ToWide(folder).c_str(), nullptr);
    CopyFileW(L"XIF32BIN.exe", L"C:\\QM5R LonWorks\\bin\\XIF32BIN.exe", FALSE);
    const HANDLE file =
        CreateFileW(windows::ToWide(kXif).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, "File\r\n\r\n\r\n\r\n80:00:D3:55:00:04:04:1D\r\n", 36, &written, nullptr);
    CloseHandle(file);
    DeleteFileW(windows::ToWide(kXfb).c_str());
    registry.SetMachineSetting("SOFTWARE\\LonWorks", "LonWorks Path", "C:\\QM5R LonWorks");
  }
  ~InterfaceFilesTest() override {
    registry.SetMachineSetting("SOFTWARE\\LonWorks", "LonWorks Path", path_before_);
  }

  windows::WindowsFiles files;
  Shell shell;
  windows::WindowsRegistry machine;
  registry::CRegistry registry{machine, "test"};

 private:
  std::string path_before_ = registry.MachineSetting("SOFTWARE\\LonWorks", "LonWorks Path");
};

TEST_F(InterfaceFilesTest, TheConverterMakesTheBinaryFormOrFails) {
  headless::Desktop desktop;
  xif::InterfaceFiles interface_files(desktop, files, shell, registry);
  interface_files.folder = "C:\\QM5R LonWorks";
  for (const wchar_t* does : {L"fail", L"hang", L"nothing", L"work"}) {
    SCOPED_TRACE(windows::ToUtf8(does));
    SetEnvironmentVariableW(L"XIF32BIN_DOES", does);
    const bool works = does == std::wstring(L"work"), hangs = does == std::wstring(L"hang");
    shell.quick = !works;
    EXPECT_EQ(interface_files.FindXifForProgramId(kId), works ? kXif : "");
    EXPECT_EQ(files.ReadStart(kXfb, 9), works ? std::to_string(SW_SHOWMINIMIZED) : "");
    EXPECT_EQ(shell.WindowExists("XIF32BIN"), hangs);
    shell.CloseWindow("XIF32BIN");
    for (const char* title : {"XIF32BIN", "Finished - XIF32BIN"}) {
      for (int i = 0; i < 100 && shell.WindowExists(title); ++i) Sleep(20);
      EXPECT_FALSE(shell.WindowExists(title)) << title << " stays open";
    }
  }
  EXPECT_EQ(desktop.messages.size(), 3u);
}

/// A user of the dialog: looks at it, types a path and presses Open.
struct User {
  static constexpr const wchar_t* kTitle = L"Locate the XIF file with Program ID 8000D3550004041D";
  static inline HWND other = nullptr;
  static inline bool others_disabled = false;
  static inline std::wstring types;

  static void CALLBACK Act(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND dialog = FindWindowW(L"#32770", kTitle);
    if (!dialog || !IsWindowVisible(dialog)) return;
    KillTimer(nullptr, timer);
    others_disabled = !IsWindowEnabled(other);
    for (const int field : {cmb13, edt1}) SetDlgItemTextW(dialog, field, types.c_str());
    PostMessageW(dialog, WM_COMMAND, types.empty() ? IDCANCEL : IDOK, 0);
  }
};

TEST_F(InterfaceFilesTest, TheUserLocatesTheFile) {
  windows::WindowsDesktop desktop;
  ui::Form front(desktop, "front", ui::BorderStyle::Sizable),
      other(desktop, "other", ui::BorderStyle::Sizable);
  other.SetCaption("Another window of the program");
  other.Show();
  front.Show();
  desktop.Yield();
  User::other = FindWindowW(nullptr, L"Another window of the program");
  SetEnvironmentVariableW(L"XIF32BIN_DOES", L"");
  xif::InterfaceFiles interface_files(desktop, files, shell, registry);
  interface_files.folder = "C:\\QM5R LonWorks";
  // A name without a folder is one in the folder where the dialog opened.
  for (const auto& [types, path] :
       {std::pair<std::string, std::string>{"", ""}, {kXif, kXif}, {"A b.xif", kXif}}) {
    User::types = windows::ToWide(types);
    User::others_disabled = false;
    SetTimer(nullptr, 0, 50, User::Act);
    EXPECT_EQ(interface_files.LocateXifByDialog(kId), path) << types;
    EXPECT_TRUE(User::others_disabled && IsWindowEnabled(User::other)) << types;
    EXPECT_EQ(interface_files.folder, path.empty() ? "C:\\QM5R LonWorks" : kFolder);
    EXPECT_FALSE(FindWindowW(nullptr, User::kTitle)) << "the dialog is gone";
  }
}

}  // namespace
