#include "transfer/settings_menu.h"

#include <algorithm>
#include <array>
#include <functional>
#include <stdexcept>
#include <utility>

#include "lns/object_path.h"
#include "platform/error.h"
#include "settings/file_names.h"
#include "startup/identity.h"
#include "text/strings.h"
#include "transfer/review_form.h"
#include "transfer/thermostat_form.h"
#include "ui/saving.h"

namespace transfer {
namespace {

using settings::DeviceSettings;

constexpr const char* kFiles = "Settings of a thermostat (*.qm5r)|*.qm5r|All Files (*.*)|*.*";
constexpr const char* kSaving = "Saving the settings";
constexpr const char* kLoading = "Loading settings";
constexpr const char* kComparing = "Comparing the settings";

/// Ends the command with a message.
[[noreturn]] void Refuse(const std::string& reason) { throw platform::Error(0, "SettingsMenu", reason); }

void RequireComplete(const editing::OpenDevice& device) {
  if (!device.IsComplete())
    Refuse("The device has not been read completely. Refresh all values before loading settings.");
}

std::string UnreadText(const std::vector<settings::Unread>& unread) {
  std::string text;
  for (const settings::Unread& each : unread) text += "\r\n" + each.variable + ": " + each.reason;
  return text;
}

/// What can be read only in parts is not compared with the whole.
void RequireAll(const DeviceSettings& settings) {
  if (!settings.unread.empty()) Refuse("Not all settings can be read:" + UnreadText(settings.unread));
}

}  // namespace

void SettingsMenu::Show(ui::HasWindow& button) {
  constexpr std::array kCommands = {&SettingsMenu::Save, &SettingsMenu::Load, &SettingsMenu::CompareWithFile,
                                    &SettingsMenu::CompareWithThermostat};
  const auto chosen = services_.desktop.ChooseFromMenu(
      button, {"&Save...", "&Load...", "Compare with &file...", "Compare with &thermostat..."});
  if (chosen) (this->*kCommands.at(*chosen))();
}

void SettingsMenu::Run(const std::string& action, const std::function<void(Device&)>& step) {
  window_.run(action, [&](Device& device) {
    try {
      return step(device);
    } catch (...) {
      if (device.IsCurrent()) throw;
    }
    if (!window_.is_ending())
      services_.desktop.ShowMessage(
          {action + " has ended: the network tool opened another device or closed the network.",
           services_.identity.PlugInName, ui::Icon::Exclamation});
  });
}

void SettingsMenu::Save() {
  Run(kSaving, [this](Device& device) {
    const auto edits = window_.pending.Count();
    if (edits != 0 &&
        device.Ask({"The file will hold the values of the thermostat, without the " + std::to_string(edits) +
                        (edits == 1 ? " change that is" : " changes that are") + " not applied.",
                    services_.identity.PlugInName, ui::Icon::Exclamation, ui::Buttons::OkCancel}) !=
            ui::Answer::Ok)
      return;
    const std::string name = lns::DevicePath(device.path());
    const ui::SaveDialog dialog{"Save settings", settings::FileNameOf(name.substr(name.rfind('/') + 1)),
                                "*" + std::string(settings::kFileExtension), kFiles};
    const auto path = device.Outside([&] {
      return ui::AskWhereToSave(services_.desktop, services_.files, dialog, services_.identity.PlugInName);
    });
    if (!path) return;
    DeviceSettings settings = Read(device);
    if (settings.HasNone()) RequireAll(settings);
    settings.origin.saved = services_.program.Time();
    settings.origin.saved_by = services_.program.User();
    services_.files.Write(*path, SettingsText(settings));
    if (!settings.unread.empty())
      device.Ask({"The file lacks what could not be read:" + UnreadText(settings.unread),
                  services_.identity.PlugInName, ui::Icon::Exclamation});
  });
}

void SettingsMenu::Load() {
  Run(kLoading, [this](Device& device) {
    RequireComplete(device);
    const auto path = AskForFile(device, "Load settings");
    if (!path) return;
    const settings::SettingsFile file = ReadFile(*path);
    const DeviceSettings settings = Read(device);
    RequireAll(settings);
    const settings::Origin& origin = file.settings.origin;
    const std::string from = origin.path.empty() ? "" : "\r\nFrom " + origin.path;
    fReview review(services_, kLoading, *path + from + (origin.saved.empty() ? "" : ", " + origin.saved),
                   "File", ReviewOf(settings, file, window_.units));
    ShowModal(device, review);
    if (!review.IsAccepted()) return;
    RequireComplete(device);
    window_.fields.Enter(review.Ticked());
  });
}

void SettingsMenu::CompareWithFile() {
  Run(kComparing, [this](Device& device) {
    const auto path = AskForFile(device, "Compare with file");
    if (path) ShowComparison(device, *path, "File", ReadFile(*path).settings);
  });
}

void SettingsMenu::CompareWithThermostat() {
  Run(kComparing, [this](Device& device) {
    const auto found = device.Outside([&] { return OtherThermostats(device); });
    if (found.empty()) Refuse("The network has no other thermostat of this type.");
    std::vector<std::string> paths;
    for (const settings::FoundDevice& each : found) paths.push_back(each.path);
    fThermostats form(services_, paths);
    ShowModal(device, form);
    if (!form.Chosen()) return;
    const settings::FoundDevice& other = found.at(*form.Chosen());
    ShowComparison(device, other.path, "Other", ReadOther(device, other));
  });
}

DeviceSettings SettingsMenu::Read(Device& device) const {
  const ui::BusyPointer busy(services_.desktop);
  settings::Origin origin;
  origin.path = lns::DevicePath(device.path());
  origin.program_id = device.Outside([&] { return device.device().ProgramId(); });
  origin.neuron_id = device.Outside([&] { return device.device().NeuronId(); });
  DeviceSettings settings = ReadSettings([&](const model::PointRow& row) { return device.ReadApart(row); },
                                         std::move(origin), {}, settings::Versions::Read);
  device.SayIdle();
  return settings;
}

std::optional<std::string> SettingsMenu::AskForFile(Device& device, const std::string& title) const {
  return device.Outside([&] { return services_.desktop.AskOpenFile({title, kFiles, {}}); });
}

/// Only a file without errors.
settings::SettingsFile SettingsMenu::ReadFile(const std::string& path) const {
  constexpr std::ptrdiff_t kShown = 12;
  settings::SettingsFile file;
  try {
    file = settings::ReadSettingsFile(services_.files, path);
  } catch (const std::runtime_error& failure) {
    Refuse(failure.what());
  }
  if (!file.HasErrors()) return file;
  std::string text = path + " has errors, so it is not used:\r\n";
  std::ptrdiff_t errors = 0;
  for (const settings::Finding& finding : file.findings)
    if (finding.is_error && ++errors <= kShown)
      text += "\r\nLine " + std::to_string(finding.line) + ": " + finding.text;
  if (errors > kShown) text += "\r\nand " + std::to_string(errors - kShown) + " more";
  Refuse(text);
}

/// Devices that cannot be asked are left out.
std::vector<settings::FoundDevice> SettingsMenu::OtherThermostats(const Device& device) const {
  const std::string own = lns::DevicePath(device.path());
  auto found = settings::FindDevices(services_.session.CurrentNetwork, services_.session.CurrentSystem,
                                     text::Pattern("*"));
  std::erase_if(found, [&](const settings::FoundDevice& each) {
    return !each.failure.empty() || text::EqualIgnoringCase(each.path, own) ||
           !platform::ValueOr(false, [&] { return settings::IsThermostat(each.device.ProgramId()); });
  });
  return found;
}

std::vector<std::string> SettingsMenu::ReadLogged(Device& device, const settings::ReadPoint& read,
                                                  const model::PointRow& row) const {
  const std::string name(row.name);
  try {
    auto fields = device.Outside([&] { return read(row); });
    services_.log.LogCommand("Reading " + name, text::Join(fields, row.separator));
    return fields;
  } catch (const platform::Error& error) {
    services_.log.LogError(activity::ErrorMessage("Error reading " + name, settings::ReasonOf(error)));
    throw;
  }
}

DeviceSettings SettingsMenu::ReadOther(Device& device, const settings::FoundDevice& other) const {
  const ui::BusyPointer busy(services_.desktop);
  services_.log.LogCommand("Comparing", other.path);
  const auto logged = [&](settings::ReadPoint read) -> settings::ReadPoint {
    return std::bind_front(&SettingsMenu::ReadLogged, this, std::ref(device), std::move(read));
  };
  settings::ReadDevice read =
      settings::Read(other, services_.session.Dialect, {}, settings::Versions::Read, logged);
  if (!read.failure.empty()) Refuse(other.path + ":\r\n\r\n" + read.failure);
  if (read.settings.HasNone() || services_.session.ObjectServer.IsLost()) RequireAll(read.settings);
  return std::move(read.settings);
}

void SettingsMenu::ShowComparison(Device& device, const std::string& heading, const std::string& other,
                                  const DeviceSettings& settings) {
  const DeviceSettings held = Read(device);
  if (held.HasNone()) RequireAll(held);
  fReview review(services_, kComparing, lns::DevicePath(device.path()) + "\r\nwith " + heading, other,
                 Compare(held, settings, window_.units));
  ShowModal(device, review);
}

void SettingsMenu::ShowModal(Device& device, ui::Form& form) const {
  device.Outside([&] { form.ShowModal(window_.form); });
}

}  // namespace transfer
