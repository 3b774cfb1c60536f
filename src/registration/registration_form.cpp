#include "registration/registration_form.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "startup/identity.h"

namespace registration {
namespace {

struct Mode {
  const char* name;
  const char* what_it_does;
};
constexpr Mode kModes[] = {
    {"Minimal Mode", "Removes the plug-in from this computer."},
    {"Complete Mode", "First removes its commands from every network."},
    {"Exhaustive Mode", "Also removes device templates that no device uses, asking about each."}};

constexpr const char* kLeavesNoInterface =
    "Complete and Exhaustive leave networks without a network interface: "
    "choose it again in the network tool.";

}  // namespace

fRegisterPlugIn::fRegisterPlugIn(ui::Desktop& desktop, std::string plug_in_name, Actions actions)
    : Form(desktop, "fRegisterPlugIn", ui::BorderStyle::FixedSingle),
      plug_in_name_(std::move(plug_in_name)),
      actions_(std::move(actions)) {
  SetCaption("Plug-in name will be set here at run time");
  std::vector<std::string> names;
  std::string modes;
  for (const auto& [name, what_it_does] : kModes) {
    names.emplace_back(name);
    modes += std::string(name) + ": " + what_it_does + "\r\n";
  }
  cmbDeregMode.SetItems(std::move(names));
  cmbDeregMode.SetAccessibleName("Deregistration mode");
  cmbDeregMode.SetToolTip(modes + kLeavesNoInterface);
  cmbDeregMode.on_change = [this] { ExplainMode(); };
  lblRegistered.SetText(actions_.registered_as);
  lblRegistered.columns = lblMode.columns = 60;
  const std::string asks =
      actions_.needs_elevation ? "\r\nWindows asks for an administrator's permission." : "";
  bRegister.SetToolTip("Makes the plug-in known to the directors on this computer." + asks);
  bDeregister.SetToolTip("Removes the plug-in in the chosen mode.\r\n" + (kLeavesNoInterface + asks));
  bRegister.shield = bDeregister.shield = actions_.needs_elevation;
  bExit.SetToolTip("Closes this window and changes nothing.");
  bRegister.on_click = [this] { Register(); };
  bDeregister.on_click = [this] { Deregister(); };
  bExit.on_click = [this] { Unload(); };
  default_button = &bRegister;
  cancel_button = &bExit;
  using ui::Box;
  SetLayout(Box::Column(
      {Box::Leaf(lblRegistered),
       Box::Framed(Frame1, Box::Column({Box::Leaf(cmbDeregMode).StretchWidth(), Box::Leaf(lblMode)}))
           .StretchWidth(),
       Box::Row({Box::Leaf(bRegister), Box::Leaf(bDeregister), Box::Leaf(bExit)})}));
}

void fRegisterPlugIn::OnLoad() {
  SetCaption(plug_in_name_);
  ChooseMode(1);
}

void fRegisterPlugIn::ChooseMode(int index) {
  cmbDeregMode.SetText(kModes[index].name);
  ExplainMode();
}

void fRegisterPlugIn::ExplainMode() {
  for (const auto& [name, what_it_does] : kModes)
    if (cmbDeregMode.Text() == name) lblMode.SetText(what_it_does);
}

void fRegisterPlugIn::Register() { Do(actions_.register_plug_in); }

void fRegisterPlugIn::Deregister() {
  const std::vector<std::string>& modes = cmbDeregMode.Items();
  const auto position = std::find(modes.begin(), modes.end(), cmbDeregMode.Text()) - modes.begin();
  Do([&] { return actions_.deregister_plug_in(static_cast<std::int32_t>(position) - 1); });
}

void fRegisterPlugIn::PressDeregister(std::int32_t mode) {
  ChooseMode(mode + 1);
  bDeregister.UserClicks();
}

void fRegisterPlugIn::Do(const std::function<bool()>& action) {
  LockControls(true);
  bool done = false;
  try {
    const ui::BusyPointer busy(desktop());
    done = action();
  } catch (...) {
    LockControls(false);  // so that the user can close the window
    throw;
  }
  LockControls(false);
  if (done) Unload();
}

void fRegisterPlugIn::LockControls(bool locked) {
  cmbDeregMode.SetLocked(locked);
  for (ui::Button* button : {&bRegister, &bDeregister, &bExit}) button->SetEnabled(!locked);
}

bool fRegisterPlugIn::OnQueryUnload(ui::CloseReason reason) {
  // Not during the action of a button.
  return reason != ui::CloseReason::User || bExit.Enabled();
}

void fRegisterPlugIn::OnHelp() { ShowHelp(actions_.help_file, startup::kRegistrationTopic, plug_in_name_); }

void fRegisterPlugIn::OnUnload() { actions_.end_plug_in(); }

}  // namespace registration
