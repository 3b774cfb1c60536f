#include "log/log.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <utility>

#include "headless/desktop.h"
#include "headless/machine.h"

namespace {

using Icon = ui::ListView::Icon;

TEST(Log, ErrorsAreSplitAtLineBreaks) {
  struct Case {
    const char* message;
    const char* action;
    const char* result;
  };
  const Case cases[] = {{"no line break", "", ""},
                        {"action\r\nresult", "action", "result"},
                        {"one\r\ntwo\r\nthree", "one", "two"},
                        {"\r\nresult", "", "result"},
                        {"unix\nbreak", "", ""},
                        {"", "", ""}};
  headless::Desktop desktop;
  headless::BuiltInProgram program{{1, 2, 3}};
  activity::fLog log(desktop, program);
  for (const Case& c : cases) {
    log.LogError(c.message);
    const ui::ListView::Row& row = log.lstActivity.Rows().back();
    EXPECT_EQ(row.icon, Icon::Red);
    EXPECT_EQ(row.cells, (std::vector<std::string>{"12:34:56", c.action, c.result})) << c.message;
  }
  log.LogCommand("Reading nciSetPts", "23,25");
  EXPECT_EQ(log.lstActivity.Rows().back().icon, Icon::Green);
  EXPECT_EQ(log.lstActivity.Rows().size(), std::size(cases) + 1);
}

TEST(Log, PopsUpOnErrorsOnlyWhenAsked) {
  headless::Desktop desktop;
  headless::BuiltInProgram program{{1, 2, 3}};
  activity::fLog log(desktop, program);
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

struct SavedLog {
  SavedLog() : log(desktop, program) {
    desktop.save_path =
        (std::filesystem::temp_directory_path() / ("qm5r-log-" + std::to_string(getpid()) + ".csv")).string();
  }
  ~SavedLog() { std::filesystem::remove(*desktop.save_path); }
  std::string Content() const {
    std::ifstream file(*desktop.save_path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  headless::Desktop desktop;
  headless::BuiltInProgram program{{1, 2, 3}};
  activity::fLog log;
};

TEST(Log, IsSavedAsCommaSeparatedValues) {
  SavedLog saved;
  saved.log.cmdSave.UserClicks();
  EXPECT_EQ(saved.Content(), "");
  EXPECT_TRUE(std::filesystem::exists(*saved.desktop.save_path)) << "an empty log makes an empty file";
  saved.log.LogCommand("say \"hi\"", "a,b");
  saved.log.LogError("only time and mark");
  saved.log.cmdSave.UserClicks();
  EXPECT_EQ(saved.Content(), "\"12:34:56\",\"say \"hi\"\",\"a,b\"\r\n\"12:34:56\",\"\",\"\"\r\n");
  ASSERT_EQ(saved.desktop.messages.size(), 1u);
  EXPECT_EQ(saved.desktop.messages[0].message.text, "File already exists, override?");
  EXPECT_EQ(saved.desktop.messages[0].message.buttons, ui::Buttons::OkCancel);
  const ui::SaveDialog& dialog = saved.desktop.save_dialogs[0];
  EXPECT_EQ(dialog.title + dialog.file_name + dialog.default_extension, "Save As...ActivityLog*.csv");
  EXPECT_EQ(dialog.filter, "Comma separated values (*.csv) |*.csv | All Files (*.*) | *.*");

  const std::string before = saved.Content();
  saved.log.LogCommand("more", "");
  saved.desktop.answers = {ui::Answer::Cancel};
  saved.log.cmdSave.UserClicks();
  EXPECT_EQ(saved.Content(), before);
  EXPECT_EQ(saved.desktop.messages.back().message.text, "Action canceled by user");
}

TEST(Log, IsClearedWhenConfirmedAndFailedSavesAreTold) {
  SavedLog saved;
  saved.log.LogCommand("a", "b");
  const auto path = std::exchange(saved.desktop.save_path, std::nullopt);
  saved.log.cmdSave.UserClicks();
  EXPECT_TRUE(saved.desktop.messages.empty());
  saved.desktop.save_path = "/nowhere/at/all.csv";
  saved.log.cmdSave.UserClicks();
  ASSERT_EQ(saved.desktop.messages.size(), 1u);
  EXPECT_EQ(saved.desktop.messages[0].message.icon, ui::Icon::Exclamation);
  EXPECT_NE(saved.desktop.messages[0].message.text.find("/nowhere/at/all.csv"), std::string::npos);
  saved.desktop.save_path = path;
  saved.desktop.answers = {ui::Answer::Cancel, ui::Answer::Ok};
  saved.log.cmdClear.UserClicks();
  EXPECT_EQ(saved.log.lstActivity.Rows().size(), 1u);
  saved.log.cmdClear.UserClicks();
  EXPECT_TRUE(saved.log.lstActivity.Rows().empty());
}

TEST(Log, ButtonsStayRightAligned) {
  SavedLog saved;
  saved.log.Load();
  saved.log.SetBounds(0, 0, 9000, 6000);
  std::map<std::string, ui::Spot> spots;
  for (const ui::Spot& spot : saved.log.layout().place()) spots.insert({spot.control->name(), spot});
  const ui::Spot &frame = spots.at("frmBottom"), &list = spots.at("lstActivity");
  EXPECT_EQ((std::vector{frame.top, frame.width, list.height, list.width}),
            (std::vector{4550.0, 8700.0, 4535.0, 8700.0}));
  const std::pair<const char*, double> lefts[] = {
      {"cmdClose", 7600}, {"cmdClear", 6500}, {"cmdSave", 5400}, {"cbOpenOnError", 240}};
  for (const auto& [name, left] : lefts) EXPECT_EQ(spots.at(name).left - frame.left, left) << name;
  EXPECT_EQ(spots.at("cbOpenOnError").top - frame.top, 240);
}

}  // namespace
