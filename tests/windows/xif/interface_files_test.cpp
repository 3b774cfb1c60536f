#include <windows.h>

#include <dlgs.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "ui/form.h"
#include "windows/com/wide_text.h"
#include "windows/system/files.h"
#include "windows/system/registry.h"
#include "windows/system/shell.h"
#include "windows/ui/desktop.h"
#include "xif/interface_files.h"

namespace {

namespace fs = std::filesystem;
constexpr const char *kKey = "SOFTWARE\\LonWorks", *kPath = "LonWorks Path", *kId = "8000D3550004041D";
HWND other_window = nullptr;
std::string seen;  // the dialogs shown, and whether the program's other window was enabled
bool cancels = false;

void CALLBACK PlayUser(HWND, UINT, UINT_PTR, DWORD) {
  const HWND dialog = FindWindowW(L"#32770", L"Locate the XIF file with Program ID 8000D3550004041D");
  const HWND failure = FindWindowW(L"#32770", L"Cannot Export Database");
  if (!IsWindowVisible(dialog) && !IsWindowVisible(failure)) return;
  seen += std::string(failure ? "failure" : "dialog") + (IsWindowEnabled(other_window) ? " beside " : " ");
  if (dialog) SetDlgItemTextW(dialog, cmb13, L"A b.xif");  // in the dialog's folder
  SendMessageW(failure ? failure : dialog, WM_COMMAND, cancels ? IDCANCEL : IDOK, 0);
}

struct QuickShell : windows::WindowsShell {
  void Pause(std::int32_t time) override { WindowsShell::Pause(quick ? 1 : time); }
  bool quick = true;
};

TEST(InterfaceFiles, AskTheUserForAFileAndConvertIt) {
  const fs::path lonworks = L"C:\\QM5R LonWorks";
  // A new folder for each run, because the dialog remembers the last one.
  const fs::path folder = lonworks / (L"\u00C4\u03A9 " + std::to_wstring(GetCurrentProcessId())),
                 xif = folder / "A b.xif";
  std::error_code ignored;
  fs::remove_all(lonworks, ignored);
  for (const fs::path& made : {lonworks / "bin", folder}) fs::create_directories(made);
  // Without quotation marks the second program would start.
  for (const fs::path& copy : {lonworks / "bin\\XIF32BIN.exe", fs::path("C:\\QM5R.exe")})
    fs::copy_file("XIF32BIN.exe", copy, fs::copy_options::overwrite_existing);
  std::ofstream(xif) << "File\n\n\n\n80:00:D3:55:00:04:04:1D\n";
  windows::WindowsRegistry machine;
  registry::CRegistry registry(machine, "test");
  const std::string path_before = registry.MachineSetting(kKey, kPath), path = windows::ToUtf8(xif.c_str());
  registry.SetMachineSetting(kKey, kPath, lonworks.string());

  windows::WindowsDesktop desktop;
  ui::Form other(desktop, "other", ui::BorderStyle::Sizable),
      front(desktop, "front", ui::BorderStyle::Sizable);
  other.SetCaption("Another window of the program");
  for (ui::Form* form : {&other, &front}) form->Show();
  desktop.Yield();
  other_window = FindWindowW(nullptr, L"Another window of the program");
  const UINT_PTR user = SetTimer(nullptr, 0, 50, PlayUser);
  const windows::WindowsFiles files;
  QuickShell shell;
  xif::InterfaceFiles interface_files(desktop, files, shell, registry);
  interface_files.folder = windows::ToUtf8(folder.c_str());
  for (const std::string does : {"cancel", "fail", "hang", "nothing", "work"}) {
    SCOPED_TRACE(does);
    _putenv(("XIF32BIN_DOES=" + does).c_str());
    cancels = does == "cancel";
    shell.quick = does != "work";
    seen.clear();
    EXPECT_EQ(interface_files.LocateXifByDialog(kId), does == "work" ? path : "");
    EXPECT_EQ(seen, cancels || does == "work" ? "dialog " : "dialog failure ");
    EXPECT_TRUE(IsWindowEnabled(other_window));
    EXPECT_EQ(shell.WindowExists("XIF32BIN"), does == "hang");
    shell.CloseWindow("XIF32BIN");
    for (int i = 0; i < 100 && shell.WindowExists("Finished - XIF32BIN"); ++i) Sleep(20);
    EXPECT_FALSE(shell.WindowExists("Finished - XIF32BIN"));
  }
  EXPECT_EQ(files.ReadStart(path.substr(0, path.size() - 3) + "XFB", 9), std::to_string(SW_SHOWMINIMIZED));
  interface_files.folder = windows::ToUtf8(lonworks.c_str());
  EXPECT_EQ(interface_files.FindXifForProgramId(kId), path);
  KillTimer(nullptr, user);
  registry.SetMachineSetting(kKey, kPath, path_before);
  fs::remove("C:\\QM5R.exe");
}

}  // namespace
