#include "interrupted_user.h"

namespace {

const std::string kSecond = "Demo Tower/Demo Tower.Floor 1/Thermostat 102";

TEST(Interruptions, LeaveTheScreenDevicesAndLogCorrect) {
  InterruptedUser user;
  const auto click = [&](auto& button) { return [&button] { button.UserClicks(); }; };
  const auto leave = [&] { user.GoTo(user.List(1)); };
  const auto switch_and_fail = [&] {
    user.simulation->faults().Add({"Thermostat 101", "nciGenOpts", "read", 1, 18200});
    user.main.obUnits[1].UserClicks();
  };
  int files_saved = 0;
  const auto choose = [&](std::size_t item) {
    return [&, item] {
      user.desktop.save_path = "C:\\saved " + std::to_string(++files_saved) + ".qm5r";
      user.desktop.from_menu = item;
      user.main.cmdSettings.UserClicks();
    };
  };
  user.desktop.open_path = "C:\\room.qm5r";
  // Breaks a rule, so that loading ends with a message.
  user.files.Write(*user.desktop.open_path,
                   "QM5R settings 1.0\nprogram ID = 8000D3550004041D\n[settings]\nnciSetPts.occ_heat = 24 C\n"
                   "FanMode = HIGH\n");
  const Pass passes[] = {
      {"configure", {{0, "20.5"}}, [&] { user.Configure(kFirst); }, true, false},
      {"another network", {{0, "20.5"}}, [&] { user.OpenNetwork("Demo Annex"); }, true},
      {"last release", {}, [&] { user.ReleaseTheLastObject(); }, true},
      {"exit", {{0, "20.5"}}, [&] { user.Exit(); }},
      {"refresh", {{39, "90"}}, click(user.main.cmdRefresh)},
      {"apply beyond the limits", {{18, "99"}}, click(user.main.cmdApply)},
      {"apply three variables", {{0, "20.5"}, {39, "90"}, {kList, "TEMPORARY"}}, click(user.main.cmdApply)},
      {"cancel", {{0, "20.5"}}, click(user.main.cmdCancel)},
      {"switch units with an edit", {{39, "90"}}, click(user.main.obUnits[1]), false, false},
      {"switch units and fail", {}, switch_and_fail},
      {"save settings", {{0, "20.5"}}, choose(0)},
      {"load settings", {{39, "90"}}, choose(1)},
      {"leave a dead band that is too wide", {{1, "26.5"}, {16, "2.5"}}, leave},
      {"leave a field that is not a number", {{0, "1:30"}}, leave}};

  const auto act_without_effect = [&] {
    const auto shown = user.desktop.messages.size();
    if (user.main.Busy()) {
      for (ui::Button* button : {&user.main.cmdRefresh, &user.main.cmdApply, &user.main.cmdCancel})
        button->UserClicks();
      for (ui::OptionButton& units : user.main.obUnits) units.UserClicks();
    }
    user.desktop.answers = {ui::Answer::No, ui::Answer::No};
    user.main.cmdExit.UserClicks();
    EXPECT_FALSE(user.main.CloseRequested(ui::CloseReason::User));
    EXPECT_GE(user.Configure(kFirst + "0"), 20005);
    EXPECT_EQ(user.OpenNetwork("Nowhere"), 20006);
    user.CreateApi().reset();
    user.api.reset();  // the window is shown
    user.desktop.messages.resize(shown);
  };
  const auto configure_again = [&] {
    user.simulation->faults().Clear();
    user.Configure(kFirst);
  };
  const auto press_escape = [&] {
    const bool is_last_read = user.Operations("Value").size() == 10;
    user.stopped = user.main.EscapePressed() && !is_last_read;
  };
  const auto remote_and_back = [&] {
    for (const bool remote : {true, false}) user.Call([=](auto& api) { World::Put(api, "Remote", remote); });
  };
  const Interruption interruptions[] = {
      {"actions without effect", Untouched, act_without_effect},
      {"Escape", Untouched, press_escape},
      {"another device", Replaced, [&] { user.Configure(kSecond); }, kSecond},
      {"the same device", Replaced, configure_again, kFirst},
      {"a device that does not answer", Unreadable, [&] { user.Configure(kSilent); }},
      {"another network", Closed, [&] { user.OpenNetwork("Demo Annex"); }},
      {"the remote flag", Closed, remote_and_back},
      {"the object server's end", ServerLost, [&] { ++user.servers_lost; }},
      {"the last release", EndedAfterThePass, [&] { user.ReleaseTheLastObject(); }},
      {"Exit", Ended, [&] { user.Exit(); }},
      {"the end of Windows", Ended, [&] { user.main.CloseRequested(ui::CloseReason::SystemShutdown); }}};

  for (const Pass& pass : passes) {
    user.Walk(pass, 0);
    const auto undisturbed = user.now;
    user.Recover();
    const auto& kinds = undisturbed.moments;
    for (auto kind = kinds.begin(); kind != kinds.end(); ++kind) {
      const bool is_first = std::find(kinds.begin(), kind, *kind) == kind;
      const bool is_last = std::find(kind + 1, kinds.end(), *kind) == kinds.end();
      if (!is_first && !is_last) continue;
      const auto moment = static_cast<std::size_t>(kind - kinds.begin()) + 1;
      for (const Interruption& interruption : interruptions) {
        SCOPED_TRACE(testing::Message()
                     << pass.name << ", moment " << moment << " (" << *kind << "): " << interruption.name);
        user.interruption = &interruption;
        user.Interrupt(pass, moment, undisturbed);
        user.Recover();
      }
    }
  }
}

}  // namespace
