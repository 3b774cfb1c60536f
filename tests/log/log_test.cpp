#include "log/log.h"

#include <gtest/gtest.h>

#include "support/fake_desktop.h"
#include "support/fake_machine.h"

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
  FakeDesktop desktop;
  FakeProgram program;
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
  FakeDesktop desktop;
  FakeProgram program;
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

}  // namespace
