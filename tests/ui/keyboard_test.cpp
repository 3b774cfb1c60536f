#include "ui/keyboard.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace {

using ui::Box;
using ui::Control;
using ui::Direction;

struct KeyboardWindow {
  ui::Tabs tabs{"tabs", {"&Heating", "&Hardware", "C&ontact"}};
  ui::Label first_label{"first_label", "&Setpoint"};
  ui::TextField first{"first"};
  ui::TextField second{"second"};
  ui::Frame timers{"timers", "&Timers"};
  ui::Label spent{"spent", "Hours"};
  ui::ChoiceList hours{"hours"};
  ui::Label data{"data", "R&D"};
  ui::Frame units{"units", "Units"};
  ui::OptionButton metric{"metric", "&Metric"}, imperial{"imperial", "&Imperial"};
  ui::Button apply{"apply", "&Apply"}, options{"options", "&Options"}, hidden{"hidden", "&Zoom"};
  ui::CheckBox show{"show", "Wait && sho&w"};
  Box layout;

  KeyboardWindow() {
    data.shows_data = true;
    hidden.SetVisible(false);
    Box one = Box::Column({Box::Leaf(first_label), Box::Leaf(first), Box::Leaf(second)});
    Box two = Box::Framed(timers, Box::Row({Box::Leaf(spent), Box::Leaf(hours)}));
    layout = Box::Column({Box::Pages(tabs, {std::move(one), std::move(two), Box::Leaf(data)}),
                          Box::Framed(units, Box::Row({Box::Leaf(metric), Box::Leaf(imperial)})),
                          Box::Leaf(hidden), Box::Leaf(apply), Box::Leaf(options), Box::Leaf(show)});
  }
};

/// The names from the tab control through the whole tab order, in forward order.
std::string Walk(const KeyboardWindow& window, Direction direction) {
  std::string names;
  const Control* at = &window.tabs;
  while ((at = ui::NextControl(window.layout, at, direction)) && at != &window.tabs)
    names = direction == Direction::Forward ? names + at->name() + " " : at->name() + " " + names;
  return names;
}

TEST(Keyboard, TabOrderFollowsTheLayout) {
  const std::tuple<const char*, void (*)(KeyboardWindow&), const char*> cases[] = {
      {"first page", [](KeyboardWindow&) {}, "first second metric apply options show "},
      {"second page", [](KeyboardWindow& w) { w.tabs.Select(1); }, "hours metric apply options show "},
      {"page without fields", [](KeyboardWindow& w) { w.tabs.Select(2); }, "metric apply options show "},
      {"the selected option", [](KeyboardWindow& w) { w.imperial.SetSelected(true); },
       "first second imperial apply options show "},
      {"a disabled field is skipped", [](KeyboardWindow& w) { w.first.SetEnabled(false); },
       "second metric apply options show "},
      {"a hidden button is skipped", [](KeyboardWindow& w) { w.apply.SetVisible(false); },
       "first second metric options show "},
  };
  for (const auto& [name, prepare, order] : cases) {
    SCOPED_TRACE(name);
    KeyboardWindow window;
    prepare(window);
    EXPECT_EQ(Walk(window, Direction::Forward), order);
    EXPECT_EQ(Walk(window, Direction::Backward), order);
    EXPECT_EQ(ui::NextControl(window.layout, nullptr, Direction::Forward), &window.tabs);
  }
}

TEST(Keyboard, FindsTheTargetOfAnAccelerator) {
  KeyboardWindow window;
  // The target, with its page if it is a tab control, and with "?" if other controls have the letter too.
  const std::tuple<const char*, char32_t, std::size_t, const Control*, std::string> rows[] = {
      {"a button, in either case", U'A', 0, nullptr, "apply"},
      {"a label leads to its field", U's', 0, nullptr, "first"},
      {"a frame leads to its first field", U't', 1, nullptr, "hours"},
      {"text from a device is no caption", U'd', 2, nullptr, "none"},
      {"a hidden button has none", U'z', 0, nullptr, "none"},
      {"a doubled ampersand is text", U' ', 0, nullptr, "none"},
      {"a single one after it marks a letter", U'w', 0, nullptr, "show"},
      {"two pages: from the first to the second", U'h', 0, nullptr, "tabs 1?"},
      {"and back to the first", U'h', 1, nullptr, "tabs 0?"},
      {"a page and a button: the page first", U'o', 0, nullptr, "tabs 2?"},
      {"then the button", U'o', 2, nullptr, "options?"},
      {"then the page again", U'o', 2, &window.options, "tabs 2?"},
      {"an option button", U'i', 0, nullptr, "imperial"},
  };
  for (const auto& [name, letter, page_in_front, active, target] : rows) {
    window.tabs.Select(page_in_front);
    const auto accelerator = ui::FindAccelerator(window.layout, letter, active);
    std::string found = accelerator ? accelerator->control->name() : "none";
    if (accelerator && accelerator->page) found += " " + std::to_string(*accelerator->page);
    if (accelerator && !accelerator->only_one) found += "?";
    EXPECT_EQ(found, target) << name;
  }
}

}  // namespace
