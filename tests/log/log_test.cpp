#include "log/log.h"

#include <gtest/gtest.h>

#include <array>

#include "headless/computer.h"
#include "headless/desktop.h"

namespace {

struct Log : testing::Test {
  headless::Desktop desktop;
  headless::BuiltInProgram program{{1, 2, 3}};
  headless::MemoryFiles files;
  activity::fLog log{desktop, program, files};
};

TEST_F(Log, SplitsErrorsAtLineBreaks) {
  const std::array<const char*, 3> cases[] = {{"no line break", "", ""},
                                              {"action\r\nresult", "action", "result"},
                                              {"one\r\ntwo\r\nthree", "one", "two"},
                                              {"\r\nresult", "", "result"},
                                              {"unix\nbreak", "", ""},
                                              {"", "", ""}};
  for (const auto& [message, action, result] : cases) {
    log.LogError(message);
    const ui::ListView::Row& row = log.lstActivity.Rows().back();
    EXPECT_EQ(row.icon, ui::ListView::Icon::Red);
    EXPECT_EQ(row.cells[0] + "|" + row.cells[1] + "|" + row.cells[2],
              std::string("12:34:56|") + action + "|" + result)
        << message;
  }
  log.LogCommand("Reading nciSetPts", "23,25");
  EXPECT_EQ(log.lstActivity.Rows().back().icon, ui::ListView::Icon::Green);
  EXPECT_EQ(log.lstActivity.Rows().size(), std::size(cases) + 1);
}

TEST_F(Log, SplitsMessagesIntoActionAndResult) {
  const std::array<const char*, 4> cases[] = {
      {"Reading", "failed", "Reading", "failed"},
      {"Reading", "one\r\ntwo\nthree\r\n\r\nfour", "Reading", "one two three four"},
      {"Error reading \r\n", "", "Error reading  ", ""},
      {"", "\r\n", "", " "}};
  for (const auto& [action, result, first, second] : cases) {
    log.LogError(activity::ErrorMessage(action, result));
    const ui::ListView::Row& row = log.lstActivity.Rows().back();
    EXPECT_EQ(row.cells[1] + "|" + row.cells[2], std::string(first) + "|" + second);
  }
}

TEST_F(Log, OpensOnErrorsOnlyIfTheUserWantsIt) {
  log.LogError("a\r\nb");
  EXPECT_FALSE(log.Visible());
  log.cbOpenOnError.SetChecked(true);
  log.LogCommand("a", "b");
  EXPECT_FALSE(log.Visible());
  log.LogError("a\r\nb");
  EXPECT_TRUE(log.Visible());
  EXPECT_FALSE(log.CloseRequested(ui::CloseReason::User)) << "closing hides it";
  EXPECT_FALSE(log.Visible());
  EXPECT_EQ(log.lstActivity.Rows().size(), 3u);
  log.LogError("a\r\nb");
  EXPECT_TRUE(log.Visible());
}

struct SavedLog : Log {
  SavedLog() { desktop.save_path = "C:\\Logs\\Room.csv"; }
  std::string Content() const { return files.ReadStart(*desktop.save_path, 1000); }
};

TEST_F(SavedLog, HasCommaSeparatedValues) {
  log.cmdSave.UserClicks();
  EXPECT_EQ(Content(), "");
  EXPECT_TRUE(files.FileExists(*desktop.save_path)) << "an empty log makes an empty file";
  log.LogCommand("say \"hi\"", "a,b");
  log.LogError("only time and mark");
  log.cmdSave.UserClicks();
  EXPECT_EQ(Content(), "\"12:34:56\",\"say \"hi\"\",\"a,b\"\r\n\"12:34:56\",\"\",\"\"\r\n");
  ASSERT_EQ(desktop.messages.size(), 1u);
  EXPECT_EQ(desktop.messages[0].message.text, "File already exists, override?");
  EXPECT_EQ(desktop.messages[0].message.buttons, ui::Buttons::OkCancel);
  EXPECT_TRUE(desktop.messages[0].message.second_is_default);
  const ui::SaveDialog& dialog = desktop.save_dialogs[0];
  EXPECT_EQ(dialog.title + dialog.file_name + dialog.default_extension, "Save As...ActivityLog*.csv");
  EXPECT_EQ(dialog.filter, "Comma separated values (*.csv) |*.csv | All Files (*.*) | *.*");

  const std::string before = Content();
  log.LogCommand("more", "");
  desktop.answers = {ui::Answer::Cancel};
  log.cmdSave.UserClicks();
  EXPECT_EQ(Content(), before);
  EXPECT_EQ(desktop.messages.back().message.text, "Action canceled by user");
  log.LogCommand("Reading", "21 \u00BAC");
  log.cmdSave.UserClicks();
  EXPECT_EQ(Content().substr(0, 4), "\xEF\xBB\xBF\"") << "byte-order mark";
}

TEST_F(SavedLog, ShowsFailuresAndAsksBeforeClearing) {
  log.LogCommand("a", "b");
  desktop.save_path.reset();
  log.cmdSave.UserClicks();
  EXPECT_TRUE(desktop.messages.empty());
  desktop.save_path = "C:\\Locked.csv";
  files.Lock(*desktop.save_path);
  log.cmdSave.UserClicks();
  ASSERT_EQ(desktop.messages.size(), 1u);
  EXPECT_EQ(desktop.messages[0].message.icon, ui::Icon::Exclamation);
  EXPECT_NE(desktop.messages[0].message.text.find("C:\\Locked.csv"), std::string::npos);
  desktop.answers = {ui::Answer::Cancel, ui::Answer::Ok};
  log.cmdClear.UserClicks();
  EXPECT_EQ(log.lstActivity.Rows().size(), 1u);
  EXPECT_TRUE(desktop.messages.back().message.second_is_default);
  log.cmdClear.UserClicks();
  EXPECT_TRUE(log.lstActivity.Rows().empty());
}

TEST_F(Log, CopiesRowsAsShown) {
  log.LogCommand("Reading nciSetPts", "23,25.5");
  log.LogCommand("Reading nciSccModel (Raw)", "04\t1A");
  log.LogError("no line break");
  log.lstActivity.UserCopies(std::vector<std::size_t>{0, 1, 2});
  EXPECT_EQ(desktop.copied,
            "12:34:56\tReading nciSetPts\t23,25.5\r\n12:34:56\tReading nciSccModel (Raw)\t04 1A\r\n"
            "12:34:56\t\t\r\n");
  log.lstActivity.UserCopies({});
  EXPECT_NE(desktop.copied, "") << "nothing selected: the clipboard stays";
}

}  // namespace
