#include <gtest/gtest.h>

#include "headless/desktop.h"
#include "headless/machine.h"
#include "headless/memory_files.h"
#include "headless/scripted_shell.h"
#include "xif/interface_files.h"
#include "xif/program_id.h"
#include "xif/search.h"

namespace {

constexpr const char* kId = "8000D3550004041D";
constexpr const char* kText = "File\r\n(C)\r\n\r\n80:00:D3:55:00:04:04:1D\r\n2 15\r\n";

TEST(Xif, ProgramIdOfAFile) {
  struct Case {
    const char* name;
    std::string text, id;
  };
  const std::string eight(8, ' '), head = "File\r\n(C)\r\n\r\n";
  for (const auto& [name, text, id] :
       {Case{"A.XIF", kText, kId}, Case{"a.xif", head + "   \r\n80:00:D3:55:00:04:04:1D", kId},
        Case{"A.XFB", kText, ""}, Case{"xif", kText, ""},
        Case{"lf.xif", "\n\n\n80:00:D3:55:00:04:04:1D\n", kId},
        Case{"cr.XiF", "\r\r\r80 00 D3 55 00 04 04 1D 00\r", kId},
        Case{"case.XIF", head + "9f.Ff.d3.55.00.04.04.1d", "9fFfd3550004041d"},
        Case{"text.XIF", head + "41:62:00:20:7E:00:E4:31",
             "Ab  ~ \u00E4"
             "1" +
                 eight},
        Case{"7.XIF", head + "7F:41:41:41:41:41:41:41:41",
             "\x7F"
             "AAAAAAA" +
                 eight},
        Case{"bad.XIF", head + "4x:62:00:20:7E:00:E4:31", ""},
        Case{"short.XIF", head + "80:00:D3:55:00:04:04:1", ""},
        Case{"cut.XIF", "File\r\n80:00:D3:55:00:04:04:1D", ""}, Case{"empty.XIF", "", ""},
        Case{"blank.XIF", head + "\r\n\r\n80:00:D3:55:00:04:04:1D", ""},
        Case{"binary.XIF", std::string(1 << 20, '\x80'), ""}}) {
    headless::MemoryFiles files;
    files.Write(std::string("C:\\") + name, text);
    EXPECT_EQ(xif::ReadXifProgramId(files, std::string("C:\\") + name), id) << name;
  }
  EXPECT_EQ(xif::ReadXifProgramId(headless::MemoryFiles(), "C:\\A.XIF"), "");
}

TEST(Xif, TheSearchTakesTheFirstFileDepthFirst) {
  headless::MemoryFiles files;
  std::string wanted = "8000d3550004041d";
  const auto next = [&](const char* path) {
    files.Write(path, kText);
    EXPECT_EQ(xif::FindXifFile(files, "C:\\X\\", wanted), path);
  };
  files.Write("C:\\X\\small.xif", "\n\n\n80:00:d3:55:00:04:04:1d");
  files.Write("C:\\X\\.hidden\\a.xif", kText);
  files.Write("C:\\X\\Locked\\a.xif", kText);
  files.Lock("C:\\X\\Locked");
  files.Write("C:\\X\\a.xif.txt", kText);
  files.MakeFolder("C:\\X\\B\\D.xif");
  for (const char* link : {"C:\\X\\loop", "C:\\X\\B\\loop", "C:\\X\\B\\again"}) files.Link(link, "C:\\X");
  std::string deep = "C:\\X\\deep";
  for (int i = 0; i < 200; ++i) files.MakeFolder(deep += "\\d");
  for (int i = 0; i < 20000; ++i) files.MakeFolder("C:\\X\\wide\\" + std::to_string(i));
  EXPECT_EQ(xif::FindXifFile(files, "C:\\X\\", wanted), "");
  EXPECT_EQ(wanted, kId);
  next("C:\\X\\wide\\19999\\a.xif");
  next((deep + "\\Z.XIF").c_str());
  next("C:\\X\\B\\\u00C4rger \u03A9\\\u03A9.xif");
  next("C:\\X\\B\\D.xif\\z.xif");
  next("C:\\X\\B\\z.xif");
  next("C:\\X\\z.xif");
  EXPECT_EQ(xif::FindXifFile(files, "C:\\none\\", wanted) + xif::FindXifFile(files, "", wanted), "");
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
    std::function<void(Computer&)> play;
    const char* missing;  // the file that the message names, if any
    std::size_t launches, closed;
    int pauses;
  };
  const char* const kXfb = "C:\\X Y\\A.XFB";
  const auto windows = [](Computer& on, std::set<std::string> titles) {
    on.shell.windows = std::move(titles);
  };
  for (const Case& each :
       {Case{"there already", [&](Computer& on) { on.files.Write(kXfb, ""); }, nullptr, 0, 0, 0},
        Case{"works",
             [&](Computer& on) {
               on.shell.on_pause = [&] {
                 if (on.shell.pauses == 5) windows(on, {"XIF32BIN"});
                 if (on.shell.pauses == 2000) on.files.Write(kXfb, "");
                 if (on.shell.pauses == 2010) windows(on, {"Finished - XIF32BIN"});
               };
             },
             nullptr, 1, 1, 2010},
        Case{"writes late",
             [&](Computer& on) {
               on.shell.on_pause = [&] {
                 on.shell.running = false;
                 if (on.shell.pauses == 900) on.files.Write(kXfb, "");
               };
             },
             nullptr, 1, 0, 900},
        Case{"ends at once", [&](Computer& on) { on.shell.on_start = [&] { on.shell.running = false; }; },
             kXfb, 1, 0, 1000},
        Case{"finishes without a file",
             [&](Computer& on) { on.shell.on_start = [&] { windows(on, {"Finished - XIF32BIN"}); }; }, kXfb,
             1, 1, 1000},
        Case{"hangs", [&](Computer& on) { windows(on, {"XIF32BIN"}); }, kXfb, 1, 0, 7000},
        Case{"shows no window", [](Computer&) {}, kXfb, 1, 0, 2000},
        Case{"cannot be started", [](Computer& on) { on.shell.refuses = true; }, kXfb, 1, 0, 0},
        Case{"is not installed", [](Computer& on) { on.machine.machine.clear(); }, kXfb, 0, 0, 0}}) {
    Computer computer;
    each.play(computer);
    const std::string path = computer.interface_files.FindXifForProgramId(kId);
    EXPECT_EQ(path, each.missing ? "" : "C:\\X Y\\A.xif") << each.name;
    EXPECT_EQ(computer.shell.launches.size(), each.launches) << each.name;
    EXPECT_EQ(computer.shell.closed.size(), each.closed) << each.name;
    EXPECT_EQ(computer.shell.pauses, each.pauses) << each.name;
    for (const auto& [program, arguments, show] : computer.shell.launches) {
      EXPECT_EQ(program + "|" + arguments,
                "C:\\LonWorks\\bin\\XIF32BIN|\"C:\\X Y\\A.xif\" \"C:\\X Y\\A.XFB\"");
      EXPECT_EQ(show, platform::Shell::Show::MinimizedWithFocus);
    }
    ASSERT_EQ(computer.desktop.messages.size(), each.missing ? 1u : 0u) << each.name;
    if (!each.missing) continue;
    const ui::Message& message = computer.desktop.messages[0].message;
    EXPECT_EQ(message.text, std::string("The file ") + each.missing + " could not be found.");
    EXPECT_EQ(message.caption, "Cannot Export Database");
    EXPECT_EQ(message.icon, ui::Icon::Critical);
  }
}

TEST(Xif, AsksForTheFile) {
  Computer computer;
  computer.files.Write("C:\\X Y\\A.XFB", "");
  computer.files.Write("D:\\B.xif", kText);
  computer.files.Write("D:\\B.XFB", "");
  const auto ask = [&](std::optional<std::string> answer) {
    computer.desktop.open_path = answer;
    const std::string path = computer.interface_files.LocateXifByDialog(kId);
    EXPECT_EQ(computer.desktop.windows, 0) << "the helper window is gone";
    return path + "|" + computer.interface_files.folder + "|" +
           std::to_string(computer.desktop.messages.size());
  };
  computer.interface_files.folder = "";
  EXPECT_EQ(computer.interface_files.FindXifForProgramId(kId), "");
  EXPECT_EQ(ask(std::nullopt), "||0");
  EXPECT_EQ(ask("C:\\X Y\\A.xif"), "C:\\X Y\\A.xif|C:\\X Y|0");
  EXPECT_EQ(ask("D:\\B.xif"), "D:\\B.xif|C:\\X Y|0") << "a whole drive is not searched";
  EXPECT_EQ(ask("D:\\gone.xif"), "|C:\\X Y|1");
  EXPECT_EQ(computer.desktop.messages[0].message.text, "The file D:\\gone.xif could not be found.");
  const ui::OpenDialog& dialog = computer.desktop.open_dialogs.back();
  EXPECT_EQ(dialog.title, "Locate the XIF file with Program ID 8000D3550004041D");
  EXPECT_EQ(dialog.filter, "External Interface Files (*.XIF)|*.XIF");
  EXPECT_EQ(dialog.folder, "C:\\X Y");
}

}  // namespace
