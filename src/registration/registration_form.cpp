#include "registration/registration_form.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "startup/help_topics.h"

namespace registration {
namespace {

constexpr const char* kLeavesNoInterface =
    "Complete and Exhaustive leave networks without a network interface: "
    "choose it again in the network tool.";

}  // namespace

fRegisterPlugIn::fRegisterPlugIn(ui::Desktop& desktop, std::string plug_in_name, Actions actions)
    : Form(desktop, "fRegisterPlugIn", ui::BorderStyle::FixedSingle),
      plug_in_name_(std::move(plug_in_name)),
      actions_(std::move(actions)) {
  SetCaption("Plug-in name will be set here at run time");
  cmbDeregMode.SetItems({"Minimal Mode", "Complete Mode", "Exhaustive Mode"});
  cmbDeregMode.SetAccessibleName("Deregistration mode");
  cmbDeregMode.SetToolTip(
      "Minimal: removes the plug-in from this computer.\r\n"
      "Complete: takes its commands off every network first.\r\n"
      "Exhaustive: also removes device templates that no device uses, asking about each.\r\n" +
      std::string(kLeavesNoInterface));
  const std::string asks =
      actions_.needs_elevation ? "\r\nWindows asks for an administrator's permission." : "";
  bRegister.SetToolTip("Makes the plug-in known to the directors on this computer." + asks);
  bDeregister.SetToolTip("Removes the plug-in in the mode that is chosen.\r\n" + (kLeavesNoInterface + asks));
  bRegister.shield = bDeregister.shield = actions_.needs_elevation;
  bExit.SetToolTip("Closes this window and changes nothing.");
  bRegister.on_click = [this] { Register(); };
  bDeregister.on_click = [this] { Deregister(); };
  bExit.on_click = [this] { Unload(); };
  default_button = &bRegister;
  cancel_button = &bExit;
  using ui::Box;
  SetLayout(Box::Column({Box::Framed(Frame1, Box::Leaf(cmbDeregMode).StretchWidth()).StretchWidth(),
                         Box::Row({Box::Leaf(bRegister), Box::Leaf(bDeregister), Box::Leaf(bExit)})}));
}

void fRegisterPlugIn::OnLoad() {
  SetCaption(plug_in_name_);
  cmbDeregMode.SetText(cmbDeregMode.Items()[1]);
}

void fRegisterPlugIn::Register() { Do(actions_.register_plug_in); }

void fRegisterPlugIn::Deregister() {
  const std::vector<std::string>& modes = cmbDeregMode.Items();
  const auto position = std::find(modes.begin(), modes.end(), cmbDeregMode.Text()) - modes.begin();
  Do([&] { return actions_.deregister_plug_in(static_cast<std::int32_t>(position) - 1); });
}

void fRegisterPlugIn::PressDeregister(std::int32_t mode) {
  cmbDeregMode.SetText(*std::next(cmbDeregMode.Items().begin(), mode + 1));
  bDeregister.UserClicks();
}

void fRegisterPlugIn::Do(const std::function<bool()>& action) {
  LockControls(true);
  bool done = false;
  try {
    const ui::BusyPointer busy(desktop());
    done = action();
  } catch (...) {
    LockControls(false);  // what is shown now must not leave a window that cannot be closed
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
  // What a button has begun ends first.
  return reason != ui::CloseReason::User || bExit.Enabled();
}

void fRegisterPlugIn::OnHelp() { ShowHelp(actions_.help_file, startup::kRegistrationTopic, plug_in_name_); }

void fRegisterPlugIn::OnUnload() { actions_.end_plug_in(); }

}  // namespace registration
