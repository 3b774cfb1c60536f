#include "ui/keyboard.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>
#include <stdexcept>

#include "headless/desktop.h"

namespace {

/// Three fields that record their events. One event may start an action.
class FocusWindow : public ui::Form {
 public:
  FocusWindow(ui::Desktop& screen, std::string event, std::string action)
      : Form(screen, "window", ui::BorderStyle::Sizable),
        event_(std::move(event)),
        action_(std::move(action)) {
    for (ui::TextField* field : {&a, &b, &c}) {
      const std::string name = field->name();
      field->on_got_focus = [this, name] { Record("got " + name); };
      field->on_lost_focus = [this, name] { Record("lost " + name); };
      field->on_validate = [this, name] { Record("check " + name); };
    }
  }

  /// "a": the user goes to it; "=a": it gets the focus; "?a": the user's move fails.
  void Act(const std::string& action) {
    ui::TextField& field = action.back() == 'a' ? a : action.back() == 'b' ? b : c;
    if (action == "stop") return focus.Stop();
    if (action == "fail") throw std::runtime_error("rule");
    if (action[0] == '=') return focus.Arrived(field);
    focus.LeaveFor(field, [&] {
      if (action[0] != '?') focus.Arrived(field);
    });
  }

  std::string journal, prepared;
  ui::TextField a{"a"}, b{"b"}, c{"c"};
  ui::FocusTracker focus{*this, [this](ui::Control& control) { prepared = control.name(); }};

 private:
  void Record(const std::string& event) {
    journal += (journal.empty() ? "" : ", ") + event;
    if (event == event_) Act(action_);
  }
  std::string event_, action_;
};

// Name; moves, one event and the action it starts; the journal and the field with the focus.
const std::array<const char*, 6> kCases[] = {
    {"first focus", "a", "", "", "got a", "a"},
    {"the user moves", "a b", "", "", "got a, check a, lost a, got b", "b"},
    {"the program moves", "=a =b", "", "", "got a, check a, lost a, got b", "b"},
    {"a check sends the program's move back", "=a =b", "check a", "=a", "got a, check a", "a"},
    {"a rule moves on: the field in between gets no events", "a b", "lost a", "=c",
     "got a, check a, lost a, got c", "c"},
    {"a rule moves back to its field", "a b", "lost a", "=a", "got a, check a, lost a, got a", "a"},
    {"a move that fails", "a ?b b", "", "", "got a, check a, check a, lost a, got b", "b"},
    {"the window closes in a check", "a b =c", "check a", "stop", "got a, check a", "a"},
    {"the window closes in a rule", "a b =c", "lost a", "stop", "got a, check a, lost a", "a"},
    {"a failing rule is not run twice", "a b =c", "lost a", "fail", "got a, check a, lost a, got c", "c"},
};

TEST(FocusTracker, NotifiesControlsInOrder) {
  for (const auto& [name, moves, event, action, journal, active] : kCases) {
    SCOPED_TRACE(name);
    headless::Desktop desktop;
    FocusWindow window(desktop, event, action);
    std::istringstream words(moves);
    for (std::string move; words >> move;) {
      try {
        window.Act(move);
      } catch (const std::runtime_error&) {
        EXPECT_STREQ(action, "fail");
      }
    }
    EXPECT_EQ(window.journal, journal);
    ASSERT_TRUE(window.ActiveControl());
    EXPECT_EQ(window.ActiveControl()->name(), active);
    EXPECT_EQ(window.prepared, active);
  }
}

}  // namespace
