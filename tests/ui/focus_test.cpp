#include "ui/focus.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/fake_desktop.h"

namespace {

/// Three fields that write down what they are told.
class Window : public ui::Form {
 public:
  explicit Window(ui::Desktop& screen) : Form(screen, "window", ui::BorderStyle::Sizable) {
    for (ui::TextField* field : {&a, &b, &c}) {
      const std::string name = field->name();
      field->on_got_focus = [this, name] { journal += " got " + name; };
      field->on_lost_focus = [this, name] { journal += " lost " + name; };
      field->on_validate = [this, name] { journal += " check " + name; };
    }
  }
  ui::TextField a{"a"}, b{"b"}, c{"c"};
  std::string journal;
};

struct FocusCase {
  const char* name;
  void (*prepare)(Window&, ui::FocusTracker&);
  void (*act)(Window&, ui::FocusTracker&);
  const char* journal;
  const char* active;
};

/// The user presses Tab or clicks.
void Go(ui::FocusTracker& focus, ui::Control& target) {
  focus.LeaveFor(target, [&] { focus.Arrived(target); });
}

const FocusCase kCases[] = {
    {"first focus", [](Window&, ui::FocusTracker&) {}, [](Window& w, ui::FocusTracker& f) { Go(f, w.a); },
     " got a", "a"},
    {"the user moves", [](Window&, ui::FocusTracker&) {},
     [](Window& w, ui::FocusTracker& f) {
       Go(f, w.a);
       Go(f, w.b);
     },
     " got a check a lost a got b", "b"},
    {"the program moves", [](Window&, ui::FocusTracker&) {},
     [](Window& w, ui::FocusTracker& f) {
       f.Arrived(w.a);
       f.Arrived(w.b);
     },
     " got a check a lost a got b", "b"},
    {"back from another window", [](Window&, ui::FocusTracker&) {},
     [](Window& w, ui::FocusTracker& f) {
       f.Arrived(w.a);
       f.Arrived(w.a);
     },
     " got a", "a"},
    {"a message in the check gives the focus back in between",
     [](Window& w, ui::FocusTracker& f) {
       w.a.on_validate = [&] {
         w.journal += " message";
         f.Arrived(w.a);
       };
     },
     [](Window& w, ui::FocusTracker& f) {
       Go(f, w.a);
       Go(f, w.b);
     },
     " got a message lost a got b", "b"},
    {"a rule moves the focus: the field between hears nothing",
     [](Window& w, ui::FocusTracker& f) {
       w.a.on_lost_focus = [&] {
         w.journal += " rule";
         f.Arrived(w.c);
         w.journal += " ends";
       };
     },
     [](Window& w, ui::FocusTracker& f) {
       Go(f, w.a);
       Go(f, w.b);
     },
     " got a check a rule ends got c", "c"},
    {"a rule moves the focus back to its field",
     [](Window& w, ui::FocusTracker& f) { w.a.on_lost_focus = [&] { f.Arrived(w.a); }; },
     [](Window& w, ui::FocusTracker& f) {
       Go(f, w.a);
       Go(f, w.b);
     },
     " got a check a got a", "a"},
    {"rules of two fields follow each other",
     [](Window& w, ui::FocusTracker& f) {
       w.b.on_got_focus = [&] {
         w.journal += " got b";
         f.Arrived(w.c);
       };
     },
     [](Window& w, ui::FocusTracker& f) {
       Go(f, w.a);
       Go(f, w.b);
     },
     " got a check a lost a got b check b lost b got c", "c"},
    {"the move does not come off: checked again next time", [](Window&, ui::FocusTracker&) {},
     [](Window& w, ui::FocusTracker& f) {
       Go(f, w.a);
       f.LeaveFor(w.b, [] {});
       Go(f, w.b);
     },
     " got a check a check a lost a got b", "b"},
    {"the window closes in a handler",
     [](Window& w, ui::FocusTracker& f) { w.a.on_validate = [&] { f.Stop(); }; },
     [](Window& w, ui::FocusTracker& f) {
       Go(f, w.a);
       f.LeaveFor(w.b, [&] { w.journal += " moved"; });
       f.Arrived(w.b);
     },
     " got a", "a"},
    {"a failing rule is not run twice",
     [](Window& w, ui::FocusTracker&) {
       w.a.on_lost_focus = [&] {
         w.journal += " fail";
         throw std::runtime_error("rule");
       };
     },
     [](Window& w, ui::FocusTracker& f) {
       Go(f, w.a);
       EXPECT_THROW(Go(f, w.b), std::runtime_error);
       f.Arrived(w.c);
     },
     " got a check a fail got c", "c"},
};

TEST(FocusTracker, TellsTheControlsInOrder) {
  for (const FocusCase& each : kCases) {
    SCOPED_TRACE(each.name);
    FakeDesktop desktop;
    Window window(desktop);
    std::string prepared;
    ui::FocusTracker focus(window, [&](ui::Control& control) { prepared += control.name(); });
    each.prepare(window, focus);
    each.act(window, focus);
    EXPECT_EQ(window.journal, each.journal);
    ASSERT_TRUE(window.ActiveControl());
    EXPECT_EQ(window.ActiveControl()->name(), each.active);
    EXPECT_EQ(prepared.back(), each.active[0]);
  }
}

}  // namespace
