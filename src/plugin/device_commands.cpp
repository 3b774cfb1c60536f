// The road of a configure command through the main window: from the device that the director named to its
// values on the screen.

#include "model/bindings.h"
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
    "formating capabilities might be restricted to standard types and standard functional profile templates. "
    "Do you want to continue?";
constexpr const char* kModeFailed = "Unable to set the Mode for the LonMark Objects, do you want to proceed?";

}  // namespace

void fMain::ProcessDeviceCommand(const lns::AppDevice& device) {
  DropDevice();
  current_device_ = device;
  ConfigureCurrentDevice();
}

void fMain::ProcessLonMarkObjectCommand(const lns::LonMarkObject& object) {
  // Another command may come in while the owner is looked up.
  const std::string path = with_.session.CurrentObjectPath;
  lns::AppDevice owner;
  Attempt([&] { owner = lns::OwningDevice(object); });
  with_.session.CurrentObjectPath = path;
  DropDevice();
  current_object_ = object;
  current_device_ = owner;
  ConfigureCurrentDevice();
}

/// Nothing of the former device may be shown as, or written to, the next one.
void fMain::DropDevice() {
  loaded_->dropped = true;
  loaded_ = std::make_shared<editing::LoadedDevice>();
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

/// The message loop runs in here, and within every call of the object server; a command that comes in then
/// takes the screen, and this one ends at its next step, without touching what the other one shows.
void fMain::ConfigureCurrentDevice() {
  const std::shared_ptr<editing::LoadedDevice> loaded = loaded_;
  try {
    PrepareAndLoad(loaded);
  } catch (const platform::Error& error) {
    with_.progress.Close();
    if (loaded->dropped) return;
    // What was typed since an earlier try is kept.
    if (!pending_.Raised()) screen.ShowInitialTexts();
    editing::ReportFailure(passes(), "Preparing the device", error.description());
  }
  with_.progress.Close();
}

void fMain::PrepareAndLoad(const std::shared_ptr<editing::LoadedDevice>& loaded) {
  if (!resource_files_.Present(with_.files)) {
    if (!AskToGoOn(kResourceFilesMissing)) return;
  } else if (!with_.session.RegistrationRemote) {
    if (!PrepareLonMarkObjects() && !loaded->dropped && !AskToGoOn(kModeFailed)) return;
  }
  if (loaded->dropped) return;
  const std::string heading = DeviceHeading();
  if (loaded->dropped) return;
  lblDeviceTemplate.SetText(heading);
  LoadDevice(loaded);
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

std::string fMain::DeviceHeading() const {
  const lns::AppDevice device = current_device_;
  const std::string template_name = text::SplitAtFirst(device.DeviceTemplate().Name(), "[").head;
  return with_.identity.PlugInName + " [" + template_name + " (" + device.Name() + ")]";
}

/// Finds out the device's state, builds its points and bindings and reads it for the first time. A read that
/// fails has been reported by the pass and leaves the layout's initial texts.
void fMain::LoadDevice(const std::shared_ptr<editing::LoadedDevice>& loaded) {
  const lns::AppDevice device = current_device_;
  const lns::Interface interface = device.Interface();
  model::PointList points(interface.NetworkVariables());
  if (loaded->dropped) return;
  current_interface_ = interface;
  loaded->points = std::move(points);
  loaded->bindings = model::MakeBindings(loaded->points, screen);
  StatusBar.SetPanel(2, with_.session.CurrentObjectPath);
  const DeviceState state = ReadDeviceState(device, with_.progress);
  if (loaded->dropped) return;
  device_online_ = state.online;
  StatusBar.SetPanel(1, state.text);
  const editing::Passes now = passes();
  editing::InitializeAllBindings(now);
  if (!editing::ReadAllPoints(now, with_.session.DisplayUnits)) return;
  editing::ShowAllValues(now);
  complete_read_ = true;
  SetUpScreen(text::LeadingWholeNumber(loaded->points.Item("nciSccModelRaw").NvAsString()));
}

}  // namespace plugin
