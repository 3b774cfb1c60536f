// The road of a configure command through the main window: from the device that the director named to its
// values on the screen.

#include "platform/attempt.h"
#include "plugin/device_state.h"
#include "plugin/main_form.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace plugin {
namespace {

using platform::Attempt;

// "formating" is spelled so deliberately.
constexpr const char* kResourceFilesMissing =
    "The resource files required for this device are not present on this computer. Browsing and data "
    "formating "
    "capabilities might be restricted to standard types and standard functional profile templates. Do you "
    "want to "
    "continue?";
constexpr const char* kModeFailed = "Unable to set the Mode for the LonMark Objects, do you want to proceed?";

}  // namespace

void fMain::ProcessDeviceCommand(const lns::AppDevice& device) {
  DropDevice();
  current_device_ = device;
  ConfigureCurrentDevice();
}

void fMain::ProcessLonMarkObjectCommand(const lns::LonMarkObject& object) {
  DropDevice();
  current_object_ = object;
  Attempt([&] { current_device_ = lns::OwningDevice(object); });
  ConfigureCurrentDevice();
}

/// Nothing of the former device may be shown as, or written to, the next one.
void fMain::DropDevice() {
  bindings_.clear();
  points_ = {};
  current_device_ = {};
  current_object_ = {};
  current_interface_ = {};
  device_online_ = false;
  complete_read_ = false;
  pending_.Lower();
  screen.ShowInitialTexts();
  lblDeviceTemplate.SetText("Device Template");
  StatusBar.SetPanel(1, "");
  StatusBar.SetPanel(2, "");
}

void fMain::ConfigureCurrentDevice() {
  try {
    if (!resource_files_.Present()) {
      if (!AskToGoOn(kResourceFilesMissing)) return;
    } else if (!with_.session.RegistrationRemote) {
      if (!PrepareLonMarkObjects() && !AskToGoOn(kModeFailed)) return;
    }
    ShowDeviceHeading();
    LoadDevice();
  } catch (const platform::Error& error) {
    with_.progress.Close();
    screen.ShowInitialTexts();
    editing::ReportFailure(passes(), "Preparing the device", error.description());
  }
  with_.progress.Close();
}

bool fMain::AskToGoOn(const std::string& question) {
  with_.progress.Close();
  const ui::Answer answer =
      desktop().ShowMessage({question, with_.identity.PlugInName, ui::Icon::Exclamation, ui::Buttons::YesNo});
  return answer == ui::Answer::Yes;
}

bool fMain::PrepareLonMarkObjects() {
  with_.progress.DisplayStatus("Complete DRF look-up in progress...");
  return Attempt([this] { SetLonMarkObjectModes(current_device_.Interface(), resource_files_); });
}

void fMain::ShowDeviceHeading() {
  const std::string template_name = text::SplitAtFirst(current_device_.DeviceTemplate().Name(), "[").head;
  lblDeviceTemplate.SetText(with_.identity.PlugInName + " [" + template_name + " (" + current_device_.Name() +
                            ")]");
}

/// Finds out the device's state, builds its points and bindings and reads it for the first time. A read that
/// fails has been reported by the pass and leaves the layout's initial texts.
void fMain::LoadDevice() {
  current_interface_ = current_device_.Interface();
  points_ = model::PointList(current_interface_.NetworkVariables());
  bindings_ = model::MakeBindings(points_, screen);
  StatusBar.SetPanel(2, with_.session.CurrentObjectPath);
  const DeviceState state = ReadDeviceState(current_device_, with_.progress);
  device_online_ = state.online;
  StatusBar.SetPanel(1, state.text);
  editing::InitializeAllBindings(passes());
  if (!editing::ReadAllPoints(passes(), with_.session.DisplayUnits)) return;
  editing::ShowAllValues(passes());
  complete_read_ = true;
  SetUpScreen(static_cast<int>(
      text::RoundHalfEven(text::LeadingNumber(points_.Item("nciSccModelRaw").NvAsArray.front()))));
}

}  // namespace plugin
