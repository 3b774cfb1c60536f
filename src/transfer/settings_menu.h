#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "editing/field_editing.h"
#include "editing/open_device.h"
#include "session/services.h"
#include "settings/device_search.h"
#include "settings/file.h"
#include "ui/form.h"

namespace transfer {

/// The menu of the settings button: saves the settings of the device on the screen as a file, enters those of
/// a file in the fields, and compares them with a file or another thermostat. Writes nothing to a device.
///
/// Each command is one pass of the device. If another device comes or the network closes while a window of
/// the command is open, the window closes, and the user reads that nothing was done.
class SettingsMenu {
 public:
  /// What the main window lends. `run` runs a pass of the device on the screen, one at a time.
  struct Window {
    ui::Form& form;
    editing::FieldEditing& fields;
    const editing::PendingEdits& pending;
    const std::int16_t& units;
    std::function<void(const std::string& action, const std::function<void(editing::OpenDevice&)>&)> run;
    /// The user or the system is ending the program.
    std::function<bool()> is_ending;
  };
  SettingsMenu(const session::Services& services, Window window)
      : services_(services), window_(std::move(window)) {}

  /// Shows the menu at its button and runs the command that the user chooses.
  void Show(ui::HasWindow& button);

  void Save();
  void Load();
  void CompareWithFile();
  void CompareWithThermostat();

 private:
  using Device = editing::OpenDevice;
  void Run(const std::string& action, const std::function<void(Device&)>& step);
  settings::DeviceSettings Read(Device& device) const;
  std::optional<std::string> AskForFile(Device& device, const std::string& title) const;
  settings::SettingsFile ReadFile(const std::string& path) const;
  std::vector<settings::FoundDevice> OtherThermostats(const Device& device) const;
  std::vector<std::string> ReadLogged(Device& device, const settings::ReadPoint& read,
                                      const model::PointRow& row) const;
  settings::DeviceSettings ReadOther(Device& device, const settings::FoundDevice& other) const;
  void ShowComparison(Device& device, const std::string& heading, const std::string& other,
                      const settings::DeviceSettings& settings);
  void ShowModal(Device& device, ui::Form& form) const;

  const session::Services& services_;
  const Window window_;
};

}  // namespace transfer
