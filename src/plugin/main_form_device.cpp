// The device on the screen: from the object that a director's configure command names to the values in their
// fields, and the passes that buttons and unit choice start.

#include <span>

#include "model/configuration_screen.h"
#include "platform/error.h"
#include "plugin/main_form.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace plugin {
namespace {

using editing::OpenDevice;

constexpr const char* kPreparing = "Preparing the device";
// The spelling "formating" is deliberate.
constexpr const char* kResourceFilesMissing =
    "The resource files required for this device are not present on this computer. Browsing and data "
    "formating capabilities might be restricted to standard types and standard functional profile templates. "
    "Do you want to continue?";
constexpr const char* kModeFailed = "Unable to set the Mode for the LonMark Objects, do you want to proceed?";

/// The fields that a model lacks. Today no model lacks any; add a row for one that does.
struct ModelRow {
  int model_number;
  std::span<const model::ControlRef> missing;
};
constexpr std::span<const ModelRow> kModels{};

}  // namespace

void fMain::ProcessDeviceCommand(const lns::AppDevice& device) { Configure(device, {}); }

void fMain::ProcessLonMarkObjectCommand(const lns::LonMarkObject& object) { Configure({}, object); }

void fMain::Configure(const lns::AppDevice& device, const lns::LonMarkObject& object) {
  Open(services_.session.CurrentObjectPath, device, object);
  const auto opened = device_;
  opened->Pass(kPreparing, [&] { PrepareAndLoad(*opened); });
}

/// Nothing of the previous device may be shown for the next one or written to it.
void fMain::Open(const std::string& path, const lns::AppDevice& device, const lns::LonMarkObject& object) {
  if (device_) device_->Supersede();
  device_ = std::make_shared<OpenDevice>(editing_context_, path, device, object);
  lblDeviceTemplate.SetText("Device Template");
  device_->TakeScreen();
}

void fMain::PrepareAndLoad(OpenDevice& device) {
  device.FindOwner();
  if (!PrepareLonMarkObjects(device)) return;
  lblDeviceTemplate.SetText(device.Outside([&] { return HeadingOf(device.device()); }));
  device.Load();
}

/// Prepares the device's LonMark objects for the resource files. False if the user does not want to continue
/// without them.
bool fMain::PrepareLonMarkObjects(OpenDevice& device) {
  const auto ask_to_go_on = [&](const char* question) {
    services_.progress.Close();
    return device.Ask({question, services_.identity.PlugInName, ui::Icon::Exclamation, ui::Buttons::YesNo}) ==
           ui::Answer::Yes;
  };
  if (!resource_files_.Present(services_.files)) return ask_to_go_on(kResourceFilesMissing);
  if (services_.session.RegistrationRemote) return true;
  device.Outside([&] { services_.progress.DisplayStatus("Complete DRF look-up in progress..."); });
  return SetLonMarkObjectModes(device) || ask_to_go_on(kModeFailed);
}

/// Sets the mode of each LonMark object to the scope of the resource files, so that the platform can format
/// its members. Changes only the network database and sends nothing to the device. False on failure.
bool fMain::SetLonMarkObjectModes(OpenDevice& device) {
  const std::int32_t scope = resource_files_.Scope();
  try {
    const auto objects = device.Outside([&] { return device.device().Interface().LonMarkObjects(); });
    for (const auto& entry : device.Outside([&] { return objects.Items(); })) {
      const auto object = device.Outside([&] { return lns::LonMarkObject(entry); });
      if (device.Outside([&] { return object.Mode(); }) != scope)
        device.Outside([&] { object.SetMode(scope); });
    }
    return true;
  } catch (const platform::Error&) {
    return false;
  }
}

std::string fMain::HeadingOf(const lns::AppDevice& device) const {
  const std::string template_name = text::SplitAtFirst(device.DeviceTemplate().Name(), "[").head;
  return services_.identity.PlugInName + " [" + template_name + " (" + device.Name() + ")]";
}

void fMain::ConnectEditing() {
  cmdApply.on_click = [this] { Apply(); };
  cmdCancel.on_click = [this] {
    if (!Busy()) device_->Cancel();
  };
  cmdRefresh.on_click = [this] { Refresh(); };
  cmdDebug.on_click = [this] { SetUpScreen(text::LeadingWholeNumber(txtDebug.Text())); };
  for (std::size_t i = 0; i < obUnits.size(); ++i)
    obUnits[i].on_click = [this, units = static_cast<std::int16_t>(i)] {
      if (units != DisplayUnits) SwitchUnits(units);
      ShowUnits();
    };
}

/// Without a device there is nothing to read.
void fMain::SwitchUnits(std::int16_t units) {
  if (device_->IsNone())
    DisplayUnits = units;
  else
    Run("Switching the units", [units](OpenDevice& device) { device.SwitchUnits(units); });
}

void fMain::Apply() {
  Run("Applying the changes", [](OpenDevice& device) { device.Apply(); });
}

/// Runs one operation at a time and ignores others that the user starts meanwhile.
void fMain::Run(const std::string& action, const std::function<void(OpenDevice&)>& pass) {
  if (Busy() || device_->SaysItIsGone()) return;
  const Operation running(*this);
  const auto device = device_;
  device->Pass(action, [&] { pass(*device); });
}

/// Prepares a device again that has not been read completely, as any step of that may have failed.
void fMain::Refresh() {
  const bool complete = device_->IsComplete();
  Run(complete ? "Refreshing" : kPreparing, [this, complete](OpenDevice& device) {
    device.Stoppable([&] { complete ? device.Refresh() : PrepareAndLoad(device); });
  });
}

void fMain::ReadAgain() {
  const auto device = device_;
  if (device->IsComplete()) device->Pass("Refreshing", [&] { device->Refresh(); });
}

bool fMain::OnEscape() { return device_->StopRefresh(); }

void fMain::ShowUnits() {
  for (std::size_t i = 0; i < obUnits.size(); ++i)
    obUnits[i].SetSelected(static_cast<int>(i) == DisplayUnits);
  for (const auto& label : screen.txtTempUnits()) label->SetText(model::TemperatureUnit(DisplayUnits));
  ShowDevice();
}

/// Shows state, path, the running action or the number of pending edits, and the changed fields.
void fMain::ShowDevice() {
  const auto edits = pending_.Count();
  const std::string waiting = edits == 0   ? ""
                              : edits == 1 ? "1 change not applied"
                                           : std::to_string(edits) + " changes not applied";
  StatusBar.SetPanel(1, device_->state().text);
  StatusBar.SetPanel(2, device_->path());
  StatusBar.SetPanel(3, device_->doing().empty() ? waiting : device_->doing());
  // A pass changes many marks; redraw the tabs only once, at its end.
  if (!device_->doing().empty()) return;
  screen.tabData.SetMarked(pending_.Pages());
  model::ShowFieldTips(screen, DisplayUnits,
                       [this](const ui::Control& field) { return device_->ChangeOf(field); });
}

/// Unknown models have all fields, as every known one does today.
void fMain::SetUpScreen(int model_number) {
  for (ui::Field* const field : screen.EditableFields()) field->SetEnabled(true);
  for (const ModelRow& row : kModels)
    if (row.model_number == model_number)
      for (const model::ControlRef field : row.missing) screen.Find(field)->SetEnabled(false);
  cmdDebug.SetVisible(DebugMode == 1);
  txtDebug.SetVisible(DebugMode == 1);
}

}  // namespace plugin
