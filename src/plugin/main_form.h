#pragma once

#include <array>
#include <functional>

#include "editing/field_editing.h"
#include "editing/loaded_device.h"
#include "editing/pending_edits.h"
#include "editing/reading.h"
#include "lns/object_model.h"
#include "log/log.h"
#include "model/configuration_screen.h"
#include "platform/files.h"
#include "plugin/object_server_events.h"
#include "plugin/resource_files.h"
#include "registration/surroundings.h"
#include "ui/form.h"

namespace plugin {

/// What the main window shares with the rest of the process; all of it outlives the window.
struct Surroundings : registration::Surroundings {
  const platform::Files& files;
  activity::fLog& log;
  /// Makes the object server of the process; throws where none can be had.
  std::function<platform::LateBoundPtr()> make_object_server;
};

/// The plug-in's configuration window. It is loaded hidden with the first automation object, prepares the
/// screen for the device of a configure command, and owns the ending of the whole plug-in.
class fMain : public ui::Form {
 public:
  explicit fMain(const Surroundings& surroundings);

  /// Shows the device's state and values. Questions and failures are shown to the user here.
  void ProcessDeviceCommand(const lns::AppDevice& device);
  /// The same for the device that owns the object; without an owner no device is shown at all.
  void ProcessLonMarkObjectCommand(const lns::LonMarkObject& object);

  /// Ends a running operation at its next step: the network that it works on is about to close.
  void AbandonOperation();

  /// Closes what the object server has open, unloads all windows and ends the process. No failure stops it; a
  /// director that comes in meanwhile does, where no other one was left.
  void EndPlugIn();
  /// Ends the plug-in when no automation object is left and the window is hidden; while an operation runs, at
  /// its end.
  void EndIfUnused();

  /// The number of the bitmap that shows the thermostat.
  static constexpr int kProductPicture = 301;

  /// The process's object server. Made at load, and again whenever it is asked for and there is none, or the
  /// one that there was has ended; throws where none can be had.
  lns::ObjectServer lcaOS();

  /// The help topic of the control that has the focus, or had it before the help button was pressed; where it
  /// has none, that of the page in front; 0 where that has none either.
  int HelpContext() const;

  bool DeviceOnline() const { return device_online_; }
  const lns::AppDevice& CurrentDevice() const { return current_device_; }
  const lns::LonMarkObject& CurrentLonMarkObject() const { return current_object_; }

  model::ConfigurationScreen screen;
  ui::Label lblDeviceTemplate{"lblDeviceTemplate"};
  ui::Picture Picture1{"Picture1", kProductPicture, 72 * 15, 48 * 15};
  ui::Frame frmUnits{"frmUnits", "Plug-In Display Units"};
  // Indexed by the display units: 0 Celsius, 1 Fahrenheit.
  std::array<ui::OptionButton, 2> obUnits{ui::OptionButton{"obUnits(0)", "&Metric"},
                                          ui::OptionButton{"obUnits(1)", "&Imperial"}};
  ui::Button cmdApply{"cmdApply", "&Apply"};
  ui::Button cmdCancel{"cmdCancel", "&Cancel"};
  ui::Button cmdRefresh{"cmdRefresh", "&Refresh All"};
  ui::Button cmdExit{"cmdExit", "&Exit"};
  ui::Button cmdHelp{"cmdHelp", ""};
  ui::Button cmdViewLog{"cmdViewLog", ""};
  ui::Button cmdDebug{"cmdDebug", ""};
  ui::TextField txtDebug{"txtDebug"};
  ui::StatusBar StatusBar{"StatusBar", 2};

 protected:
  void OnLoad() override;
  void OnActivate() override;
  bool OnQueryUnload(ui::CloseReason reason) override;
  void OnUnload() override;
  void OnHelp() override;

 private:
  ui::Box MakeLayout();
  void GetDisplayUnits();
  void GetDebug();
  void TakeObjectServer(const lns::ObjectServer& made);
  void ReleaseObjectServer();
  void ConfirmExit();
  void ConnectEditing();
  void Run(const std::function<void()>& command);
  void Apply();
  void Refresh();
  /// False where the read failed, which has been told.
  bool ReadAndShow();
  void SwitchUnits(std::int16_t units);
  void ShowUnits();
  void SetUpScreen(int model_number);

  void DropDevice();
  void ConfigureCurrentDevice();
  void PrepareAndLoad(const std::shared_ptr<editing::LoadedDevice>& loaded);
  bool AskToGoOn(const std::string& question);
  bool PrepareLonMarkObjects();
  std::string DeviceHeading() const;
  void LoadDevice(const std::shared_ptr<editing::LoadedDevice>& loaded);
  editing::Passes passes();

  Surroundings with_;
  lns::ObjectServer object_server_;
  lns::AppDevice current_device_;
  lns::LonMarkObject current_object_;
  lns::Interface current_interface_;
  bool device_online_ = false;
  bool ending_ = false;
  std::shared_ptr<editing::LoadedDevice> loaded_ = std::make_shared<editing::LoadedDevice>();
  ResourceFiles resource_files_;

  editing::PendingEdits pending_;
  editing::FieldEditing fields_;
  /// Every point holds what was read in the display units; nothing may be applied before.
  bool complete_read_ = false;
  ObjectServerEvents events_;
  std::unique_ptr<platform::Subscription> subscription_;
};

}  // namespace plugin
