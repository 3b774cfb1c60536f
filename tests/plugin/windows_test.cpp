#include <array>
#include <set>

#include "registration/registration_form.h"
#include "support/world.h"
#include "transfer/review_form.h"
#include "transfer/thermostat_form.h"
#include "ui/keyboard.h"

namespace {

using Kind = ui::Control::Kind;

struct Windows : World {
  registration::fRegisterPlugIn registration{desktop, "Plug-in", {}};
  transfer::fReview review{services, "Comparing", "Room", "Other", {}};
  transfer::fThermostats thermostats{services, {}};
};

void ExpectDistinct(const ui::Box& box, std::set<std::string>& names) {
  for (const ui::Box& child : box.children) ExpectDistinct(child, names);
  if (!box.control) return;
  const ui::Control& control = *box.control;
  for (const Kind silent : {Kind::Frame, Kind::Label, Kind::StatusBar})
    if (control.kind() == silent) return;
  std::string name = control.AccessibleName().empty() ? control.Text() : control.AccessibleName();
  std::erase(name, '&');
  EXPECT_FALSE(name.empty()) << control.name();
  EXPECT_TRUE(names.insert(name).second) << name;
  const Kind kind = control.kind();
  const bool explains_itself =
      kind == Kind::Tabs || kind == Kind::ListView || kind == Kind::WebView || kind == Kind::Picture;
  EXPECT_NE(explains_itself, !control.ToolTip().empty()) << control.name();
}

/// The letters that more than one control has while the same page is in front.
std::set<char> Clashes(const ui::Box& layout, ui::Tabs* tabs) {
  std::set<char> clashes;
  for (std::size_t page = 0; page < (tabs ? tabs->Captions().size() : 1); ++page) {
    if (tabs) tabs->Select(page);
    for (char letter = 'a'; letter <= 'z'; ++letter) {
      const auto found = ui::FindAccelerator(layout, static_cast<char32_t>(letter), nullptr);
      if (found && !found->only_one) clashes.insert(letter);
    }
  }
  return clashes;
}

TEST(Windows, ControlsHaveDistinctNamesAndAccelerators) {
  Windows windows;
  windows.main.Load();
  const std::tuple<const ui::Form*, ui::Tabs*, std::set<char>> cases[] = {
      // The captions of the pages share two letters.
      {&windows.main, &windows.main.screen.tabData, {'h', 'o'}},
      {&windows.log, nullptr, {}},
      {&windows.review, nullptr, {}},
      {&windows.thermostats, nullptr, {}},
      {&windows.registration, nullptr, {}}};
  for (const auto& [form, tabs, clashes] : cases) {
    SCOPED_TRACE(form->name());
    std::set<std::string> names;
    ExpectDistinct(form->layout(), names);
    EXPECT_EQ(Clashes(form->layout(), tabs), clashes);
  }
}

TEST(Windows, FitOnASmallScreen) {
  Windows windows;
  windows.desktop.work_area = {900, 600, 7500, 4500};
  ui::fProgress progress(windows.desktop, windows.program, "Plug-in");
  for (ui::Form* form :
       std::initializer_list<ui::Form*>{&windows.main, &windows.log, &windows.review, &windows.thermostats,
                                        &windows.registration, &progress}) {
    form->Load();
    EXPECT_EQ((std::array{form->Left(), form->Top(), form->Width(), form->Height()}),
              (std::array<double, 4>{900, 600, 7500, 4500}))
        << form->name();
  }
}

}  // namespace
