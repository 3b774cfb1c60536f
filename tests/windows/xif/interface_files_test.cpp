#include <windows.h>

#include <dlgs.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "headless/desktop.h"
#include "ui/form.h"
#include "windows/com/wide_text.h"
#include "windows/system/files.h"
#include "windows/system/registry.h"
#include "windows/system/shell.h"
#include "windows/ui/desktop.h"
#include "xif/interface_files.h"

namespace {

namespace fs = std::filesystem;
const fs::path kLonWorks = L"C:\\QM5R LonWorks", kFolder = kLonWorks / L"Import \u00C4\u03A9",
               kXif = kFolder / L"A b.xif";
constexpr const char *kKey = "SOFTWARE\\LonWorks", *kPath = "LonWorks Path", *kId = "8000D3550004041D";
constexpr const wchar_t* kTitle = L"Locate the XIF file with Program ID 8000D3550004041D";

/// The real computer, with the converter where the registry says and shorter rounds where nothing is to come
/// of them.
struct Computer {
  explicit Computer(ui::Desktop& desktop) : interface_files(desktop, files, shell, registry) {
    fs::create_directories(kFolder);
    fs::create_directories(kLonWorks / "bin");
    constexpr auto kReplace = fs::copy_options::overwrite_existing;
    fs::copy_file("XIF32BIN.exe", kLonWorks / "bin\\XIF32BIN.exe", kReplace);
    // What a path without quotation marks would start.
    fs::copy_file("XIF32BIN.exe", "C:\\QM5R.exe", kReplace);
    std::ofstream(kXif) << "File\n\n\n\n80:00:D3:55:00:04:04:1D\n";
    fs::remove(kFolder / "A b.XFB");
    registry.SetMachineSetting(kKey, kPath, kLonWorks.string());
    interface_files.folder = kLonWorks.string();
  }
  ~Computer() {
    registry.SetMachineSetting(kKey, kPath, path_before);
    fs::remove("C:\\QM5R.exe");
  }
  struct Shell : windows::WindowsShell {
    void Pause(std::int32_t time) override { WindowsShell::Pause(quick ? 1 : time); }
    bool quick = false;
  };
  windows::WindowsFiles files;
  Shell shell;
  windows::WindowsRegistry machine;
  registry::CRegistry registry{machine, "test"};
  std::string path_before = registry.MachineSetting(kKey, kPath);
  xif::InterfaceFiles interface_files;
};

TEST(InterfaceFiles, TheConverterMakesTheBinaryFormOrFails) {
  headless::Desktop desktop;
  Computer computer(desktop);
  for (const std::string does : {"fail", "hang", "nothing", "work"}) {
    _putenv(("XIF32BIN_DOES=" + does).c_str());
    computer.shell.quick = does != "work";
    EXPECT_EQ(computer.interface_files.FindXifForProgramId(kId),
              does == "work" ? windows::ToUtf8(kXif.c_str()) : "")
        << does;
    std::string written;
    std::ifstream(kFolder / "A b.XFB") >> written;
    EXPECT_EQ(written, does == "work" ? std::to_string(SW_SHOWMINIMIZED) : "") << does;
    EXPECT_EQ(computer.shell.WindowExists("XIF32BIN"), does == "hang") << does;
    computer.shell.CloseWindow("XIF32BIN");
    const auto open = [] {
      return FindWindowW(nullptr, L"XIF32BIN") || FindWindowW(nullptr, L"Finished - XIF32BIN");
    };
    for (int i = 0; i < 100 && open(); ++i) Sleep(20);
    EXPECT_FALSE(open()) << does;
  }
}

std::wstring to_type;
bool other_was_enabled = false;
HWND other_window = nullptr;

/// The user, when the dialog has come up.
void CALLBACK AnswerDialog(HWND, UINT, UINT_PTR timer, DWORD) {
  const HWND dialog = FindWindowW(L"#32770", kTitle);
  if (!dialog || !IsWindowVisible(dialog)) return;
  KillTimer(nullptr, timer);
  other_was_enabled = IsWindowEnabled(other_window);
  SetDlgItemTextW(dialog, cmb13, to_type.c_str());
  PostMessageW(dialog, WM_COMMAND, to_type.empty() ? IDCANCEL : IDOK, 0);
}

TEST(InterfaceFiles, TheUserLocatesTheFile) {
  windows::WindowsDesktop desktop;
  ui::Form front(desktop, "front", ui::BorderStyle::Sizable),
      other(desktop, "other", ui::BorderStyle::Sizable);
  other.SetCaption("Another window of the program");
  other.Show();
  front.Show();
  desktop.Yield();
  other_window = FindWindowW(nullptr, L"Another window of the program");
  _putenv("XIF32BIN_DOES=work");
  Computer computer(desktop);
  // A name alone is one in the folder where the dialog opened.
  for (const auto& [typed, chosen] : {std::pair(L"", fs::path()), {kXif.c_str(), kXif}, {L"A b.xif", kXif}}) {
    to_type = typed;
    SetTimer(nullptr, 0, 50, AnswerDialog);
    EXPECT_EQ(computer.interface_files.LocateXifByDialog(kId), windows::ToUtf8(chosen.c_str()));
    EXPECT_TRUE(!other_was_enabled && IsWindowEnabled(other_window));
    EXPECT_FALSE(FindWindowW(nullptr, kTitle));
  }
}

}  // namespace
