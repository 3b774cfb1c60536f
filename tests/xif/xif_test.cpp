#include <gtest/gtest.h>

#include "headless/computer.h"
#include "headless/desktop.h"
#include "xif/interface_files.h"
#include "xif/search.h"

namespace {

constexpr const char *kId = "8000D3550004041D",
                     *kText = "File\r\n(C)\r\n\r\n80:00:D3:55:00:04:04:1D\r\n2\r\n";

TEST(Xif, ReadsTheProgramIdOfAFile) {
  const std::string head = "File\r\n(C)\r\n\r\n";
  const std::string cases[][3] = {
      {"A.XIF", kText, kId},
      {"a.xif", head + "  \r\n80:00:D3:55:00:04:04:1D", kId},
      {"A.XFB", kText, ""},
      {"lf.xif", "\n\n\n80:00:D3:55:00:04:04:1D\n", kId},
      {"cr.Xif", "\r\r\r9f 00 d3 55 00 04 04 1D 00\r", "9f00d3550004041D"},
      {"text.xif", head + "41:62:00:20:7E:00:E4:31", "Ab  ~ \u00E4\u0031        "},
      {"bad.xif", head + "4x:62:00:20:7E:00:E4:31", ""},
      {"short.xif", head + "80:00:D3:55:00:04:04:1", ""},
      {"cut.xif", "80:00:D3:55:00:04:04:1D", ""},
      {"big.xif", std::string(1 << 20, '\x80'), ""}};
  headless::MemoryFiles files;
  EXPECT_EQ(xif::ReadXifProgramId(files, "A.XIF"), "");
  for (const auto& [name, text, id] : cases) {
    files.Write(name, text);
    EXPECT_EQ(xif::ReadXifProgramId(files, name), id) << name;
  }
}

TEST(Xif, FindsTheFirstFileDepthFirst) {
  headless::MemoryFiles files;
  std::string wanted = "8000d3550004041d";
  files.Write("C:\\X\\small.xif", "\n\n\n80:00:d3:55:00:04:04:1d");
  for (const char* left_out : {".hidden\\a.xif", "Locked\\a.xif", "a.xif.txt"})
    files.Write(std::string("C:\\X\\") + left_out, kText);
  files.Lock("C:\\X\\Locked");
  files.MakeFolder("C:\\X\\B\\D.xif");
  for (const char* link : {"C:\\X\\loop", "C:\\X\\B\\loop", "C:\\X\\B\\again"}) files.Link(link, "C:\\X");
  for (int i = 0; i < 20000; ++i) files.MakeFolder("C:\\X\\wide\\" + std::to_string(i));
  EXPECT_EQ(xif::FindXifFile(files, "C:\\X\\", wanted), "");
  EXPECT_EQ(wanted, kId);
  // Each is found before all those above it.
  for (const std::string path : {"wide\\19999\\a.xif", "wide\\0\\1\\Z.XIF", "B\\\u00C4rger\\\u03A9.xif",
                                 "B\\D.xif\\z.xif", "B\\z.xif", "z.xif"}) {
    files.Write("C:\\X\\" + path, kText);
    EXPECT_EQ(xif::FindXifFile(files, "C:\\X\\", wanted), "C:\\X\\" + path);
  }
}

struct Computer {
  Computer() {
    registry.SetMachineSetting("SOFTWARE\\LonWorks", "LonWorks Path", "C:\\LonWorks\\");
    for (const char* path : {"C:\\X Y\\A.xif", "D:\\B.xif", "D:\\B.XFB"}) files.Write(path, kText);
    interface_files.folder = "C:\\X Y";
  }
  headless::Desktop desktop;
  headless::MemoryFiles files;
  headless::ScriptedShell shell;
  headless::MemoryRegistry machine;
  registry::CRegistry registry{machine, "test"};
  xif::InterfaceFiles interface_files{desktop, files, shell, registry};
};

TEST(Xif, ConvertsTheFileFound) {
  struct Case {
    const char* name;
    std::function<void(Computer&)> play;  // before, at the start and in each round
    bool made;
    std::size_t launches;
    int rounds;
  };
  const auto write = [](Computer& on) { on.files.Write("C:\\X Y\\A.XFB", ""); };
  const auto show = [](Computer& on, const char* title) { on.shell.windows = {title}; };
  const auto end = [](Computer& on) { on.shell.running = false; };
  const Case cases[] = {
      {"is not needed", write, true, 0, 0},
      {"works",
       [&](Computer& on) {
         if (on.shell.pauses == 5) show(on, "XIF32BIN");
         if (on.shell.pauses == 2000) write(on);
         if (on.shell.pauses == 2010) show(on, "Finished - XIF32BIN");
       },
       true, 1, 2010},
      {"writes late", [&](Computer& on) { on.shell.pauses == 900 ? write(on) : end(on); }, true, 1, 900},
      {"ends early", end, false, 1, 1000},
      {"hangs", [&](Computer& on) { show(on, "XIF32BIN"); }, false, 1, 7000},
      {"shows no window", [](Computer&) {}, false, 1, 2000},
      {"cannot be started", [](Computer& on) { on.shell.refuses = true; }, false, 1, 0},
      {"is not installed", [](Computer& on) { on.machine.machine.clear(); }, false, 0, 0}};
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    Computer on;
    each.play(on);
    on.shell.on_start = on.shell.on_pause = [&] { each.play(on); };
    EXPECT_EQ(on.interface_files.FindXifForProgramId(kId), each.made ? "C:\\X Y\\A.xif" : "");
    EXPECT_FALSE(on.shell.WindowExists("Finished - XIF32BIN"));
    EXPECT_EQ(on.shell.pauses, each.rounds);
    ASSERT_EQ(on.shell.launches.size(), each.launches);
    for (const auto& [program, arguments, shown] : on.shell.launches)
      EXPECT_EQ(program + " " + arguments, R"(C:\LonWorks\bin\XIF32BIN "C:\X Y\A.xif" "C:\X Y\A.XFB")");
    std::string shown;
    for (const auto& box : on.desktop.messages) shown += box.message.caption + "|" + box.message.text;
    EXPECT_EQ(shown, each.made ? "" : "Cannot Export Database|The file C:\\X Y\\A.XFB could not be found.");
  }
}

TEST(Xif, AsksForTheFile) {
  Computer on;
  on.interface_files.folder = "";
  EXPECT_EQ(on.interface_files.FindXifForProgramId(kId), "");
  EXPECT_EQ(on.interface_files.LocateXifByDialog(kId), "");
  on.files.Write("C:\\X Y\\A.XFB", "");
  for (const char* path : {"C:\\X Y\\A.xif", "D:\\B.xif"}) {
    on.desktop.open_path = path;
    EXPECT_EQ(on.interface_files.LocateXifByDialog(kId), path);
    EXPECT_EQ(on.interface_files.folder, "C:\\X Y") << "a drive does not become the search folder";
  }
  const ui::OpenDialog& dialog = on.desktop.open_dialogs.back();
  EXPECT_EQ(dialog.title, "Locate the XIF file with Program ID 8000D3550004041D");
  EXPECT_EQ(dialog.filter + dialog.folder, "External Interface Files (*.XIF)|*.XIFC:\\X Y");
  EXPECT_EQ(on.desktop.windows, 0) << "the helper window is gone";
  EXPECT_EQ(on.desktop.messages.size(), 0u);
}

}  // namespace
