#include <gtest/gtest.h>

#include "headless/desktop.h"
#include "headless/machine.h"
#include "headless/memory_files.h"
#include "headless/scripted_shell.h"
#include "xif/interface_files.h"
#include "xif/program_id.h"
#include "xif/search.h"

namespace {

constexpr const char *kId = "8000D3550004041D",
                     *kText = "File\r\n(C)\r\n\r\n80:00:D3:55:00:04:04:1D\r\n2 15\r\n";

TEST(Xif, ProgramIdOfAFile) {
  const std::string head = "File\r\n(C)\r\n\r\n";
  const std::string cases[][3] = {{"A.XIF", kText, kId},
                                  {"a.xif", head + "  \r\n80:00:D3:55:00:04:04:1D", kId},
                                  {"A.XFB", kText, ""},
                                  {"lf.xif", "\n\n\n80:00:D3:55:00:04:04:1D\n", kId},
                                  {"cr.Xif", "\r\r\r80 00 D3 55 00 04 04 1D 00\r", kId},
                                  {"case.xif", head + "9f.Ff.d3.55.00.04.04.1d", "9fFfd3550004041d"},
                                  {"bad.xif", head + "4x:62:00:20:7E:00:E4:31", ""},
                                  {"text.xif", head + "41:62:00:20:7E:00:E4:31",
                                   "Ab  ~ \u00E4"
                                   "1        "},
                                  {"short.xif", head + "80:00:D3:55:00:04:04:1", ""},
                                  {"cut.xif", "80:00:D3:55:00:04:04:1D", ""},
                                  {"blank.xif", head + "\r\n\r\n80:00:D3:55:00:04:04:1D", ""},
                                  {"big.xif", std::string(1 << 20, '\x80'), ""}};
  headless::MemoryFiles files;
  EXPECT_EQ(xif::ReadXifProgramId(files, "A.XIF"), "");
  for (const auto& [name, text, id] : cases) {
    files.Write(name, text);
    EXPECT_EQ(xif::ReadXifProgramId(files, name), id) << name;
  }
}

TEST(Xif, TheSearchTakesTheFirstFileDepthFirst) {
  headless::MemoryFiles files;
  std::string wanted = "8000d3550004041d", deep = "C:\\X\\deep";
  files.Write("C:\\X\\small.xif", "\n\n\n80:00:d3:55:00:04:04:1d");
  for (const char* not_found : {"C:\\X\\.hidden\\a.xif", "C:\\X\\Locked\\a.xif", "C:\\X\\a.xif.txt"})
    files.Write(not_found, kText);
  files.Lock("C:\\X\\Locked");
  files.MakeFolder("C:\\X\\B\\D.xif");
  for (const char* link : {"C:\\X\\loop", "C:\\X\\B\\loop", "C:\\X\\B\\again"}) files.Link(link, "C:\\X");
  for (int i = 0; i < 200; ++i) files.MakeFolder(deep += "\\d");
  for (int i = 0; i < 20000; ++i) files.MakeFolder("C:\\X\\wide\\" + std::to_string(i));
  EXPECT_EQ(xif::FindXifFile(files, "C:\\X\\", wanted) + xif::FindXifFile(files, "C:\\none\\", wanted), "");
  EXPECT_EQ(wanted, kId);
  // Each comes before all those above it.
  for (const std::string& path :
       {std::string("C:\\X\\wide\\19999\\a.xif"), deep + "\\Z.XIF",
        std::string("C:\\X\\B\\\u00C4rger\\\u03A9.xif"), std::string("C:\\X\\B\\D.xif\\z.xif"),
        std::string("C:\\X\\B\\z.xif"), std::string("C:\\X\\z.xif")}) {
    files.Write(path, kText);
    EXPECT_EQ(xif::FindXifFile(files, "C:\\X\\", wanted), path);
  }
}

struct Computer {
  Computer() {
    registry.SetMachineSetting("SOFTWARE\\LonWorks", "LonWorks Path", "C:\\LonWorks\\");
    files.Write("C:\\X Y\\A.xif", kText);
    interface_files.folder = "C:\\X Y";
  }
  headless::Desktop desktop;
  headless::MemoryFiles files;
  headless::ScriptedShell shell;
  headless::MemoryRegistry machine;
  registry::CRegistry registry{machine, "test"};
  xif::InterfaceFiles interface_files{desktop, files, shell, registry};
};

TEST(Xif, ExportsTheFileFound) {
  struct Case {
    const char* name;
    std::function<void(Computer&)> at_first, in_round;
    bool made;
    std::size_t launches, closed;
    int rounds;
  };
  const auto idle = [](Computer&) {};
  const auto write = [](Computer& on) { on.files.Write("C:\\X Y\\A.XFB", ""); };
  const auto working = [](Computer& on) { on.shell.windows = {"XIF32BIN"}; };
  const auto finished = [](Computer& on) { on.shell.windows = {"Finished - XIF32BIN"}; };
  const auto ends = [](Computer& on) { on.shell.on_start = [&] { on.shell.running = false; }; };
  const auto converts = [&](Computer& on) {
    if (on.shell.pauses == 5) working(on);
    if (on.shell.pauses == 2000) write(on);
    if (on.shell.pauses == 2010) finished(on);
  };
  const auto writes_late = [&](Computer& on) {
    if (on.shell.pauses == 900) write(on);
  };
  for (const Case& each :
       {Case{"is there already", write, idle, true, 0, 0, 0},
        {"works", idle, converts, true, 1, 1, 2010},
        {"ends first", ends, writes_late, true, 1, 0, 900},
        {"ends", ends, idle, false, 1, 0, 1000},
        {"finishes without a file", finished, idle, false, 1, 1, 1000},
        {"hangs", working, idle, false, 1, 0, 7000},
        {"has no window", idle, idle, false, 1, 0, 2000},
        {"cannot start", [](Computer& on) { on.shell.refuses = true; }, idle, false, 1, 0, 0},
        {"is not installed", [](Computer& on) { on.machine.machine.clear(); }, idle, false, 0, 0, 0}}) {
    SCOPED_TRACE(each.name);
    Computer on;
    each.at_first(on);
    on.shell.on_pause = [&] { each.in_round(on); };
    EXPECT_EQ(on.interface_files.FindXifForProgramId(kId), each.made ? "C:\\X Y\\A.xif" : "");
    EXPECT_EQ(on.shell.closed.size(), each.closed);
    EXPECT_EQ(on.shell.pauses, each.rounds);
    ASSERT_EQ(on.shell.launches.size(), each.launches);
    for (const auto& [program, arguments, show] : on.shell.launches)
      EXPECT_EQ(program + "|" + arguments,
                "C:\\LonWorks\\bin\\XIF32BIN|\"C:\\X Y\\A.xif\" \"C:\\X Y\\A.XFB\"");
    ASSERT_EQ(on.desktop.messages.size(), each.made ? 0u : 1u);
    if (each.made) continue;
    const ui::Message& message = on.desktop.messages[0].message;
    EXPECT_EQ(message.caption + "|" + message.text,
              "Cannot Export Database|The file C:\\X Y\\A.XFB could not be found.");
  }
}

TEST(Xif, AsksForTheFile) {
  Computer on;
  for (const char* path : {"C:\\X Y\\A.XFB", "D:\\B.xif", "D:\\B.XFB"}) on.files.Write(path, kText);
  on.interface_files.folder = "";
  EXPECT_EQ(on.interface_files.FindXifForProgramId(kId), "");
  // A whole drive does not become the folder to search.
  for (const auto& [answer, path, folder] : {std::array<std::string, 3>{"", "", ""},
                                             {"C:\\X Y\\A.xif", "C:\\X Y\\A.xif", "C:\\X Y"},
                                             {"D:\\B.xif", "D:\\B.xif", "C:\\X Y"},
                                             {"D:\\gone.xif", "", "C:\\X Y"}}) {
    on.desktop.open_path = answer.empty() ? std::nullopt : std::optional(answer);
    EXPECT_EQ(on.interface_files.LocateXifByDialog(kId), path);
    EXPECT_EQ(on.interface_files.folder, folder);
    EXPECT_EQ(on.desktop.windows, 0) << "the helper window is gone";
  }
  ASSERT_EQ(on.desktop.messages.size(), 1u);
  EXPECT_EQ(on.desktop.messages[0].message.text, "The file D:\\gone.xif could not be found.");
  const ui::OpenDialog& dialog = on.desktop.open_dialogs.back();
  EXPECT_EQ(
      dialog.title + "|" + dialog.filter + "|" + dialog.folder,
      "Locate the XIF file with Program ID 8000D3550004041D|External Interface Files (*.XIF)|*.XIF|C:\\X Y");
}

}  // namespace
