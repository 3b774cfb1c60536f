#pragma once

#include <array>
#include <functional>

#include "editing/field_editing.h"
#include "editing/open_device.h"
#include "lns/object_model.h"
#include "log/log.h"
#include "lonworks/resource_files.h"
#include "model/configuration_screen.h"
#include "plugin/object_server_events.h"
#include "session/services.h"
#include "transfer/settings_menu.h"
#include "ui/form.h"

namespace plugin {

/// The plug-in's configuration window. It is loaded hidden with the first automation object, prepares the
/// screen for the device of a configure command, and decides when the plug-in ends.
class fMain : public ui::Form {
 public:
  explicit fMain(const session::Services& services);

  /// Shows the device's state and values, and questions and failures to the user.
  void ProcessDeviceCommand(const lns::AppDevice& device);
  /// The same for the device that owns the object; without an owner it shows no device.
  void ProcessLonMarkObjectCommand(const lns::LonMarkObject& object);

  /// Closes everything on the object server, unloads all windows and ends the process. Failures do not stop
  /// it; a director that arrives meanwhile does, if there was none before.
  void EndPlugIn();
  bool HasEnded() const { return ending_ == Ending::ForGood; }
  /// Ends the plug-in if no automation object is left and the window is hidden, or if the user has asked for
  /// it; during an operation, at its end.
  void EndIfWanted();

  /// Exists while a long operation runs. The message loop runs in it, so calls and clicks arrive.
  class Operation {
   public:
    explicit Operation(fMain& main) : main_(main) { ++main_.running_operations_; }
    ~Operation() {
      --main_.running_operations_;
      main_.EndIfWanted();
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

   private:
    fMain& main_;
  };
  bool Busy() const { return running_operations_ > 0; }

  /// The number of the bitmap that shows the thermostat.
  static constexpr int kProductPicture = 301;

  /// The process's object server. Created at load, and again on demand if there is none or it has ended;
  /// throws if that fails. None once the program has ended, as nobody would close what it opens.
  lns::ObjectServer lcaOS();

  /// The help topic of the control that has the focus or had it before the help button; if it has none, the
  /// topic of the page in front; 0 if that has none either.
  int HelpContext() const;

  bool DeviceOnline() const { return device_->state().online; }
  const lns::AppDevice& CurrentDevice() const { return device_->device(); }
  const lns::LonMarkObject& CurrentLonMarkObject() const { return device_->object(); }
  const lns::Interface& CurrentDeviceInterface() const { return device_->interface(); }

  /// 0 SI (Celsius), 1 US (Fahrenheit).
  std::int16_t DisplayUnits = 0;
  /// 1 shows the debug controls.
  std::int16_t DebugMode = 0;

  model::ConfigurationScreen screen;
  ui::Label lblModelCaption{"lblModelCaption", "Model:"},
      lblHvacTypeCaption{"lblHvacTypeCaption", "HVAC type:"};
  ui::Label lblDeviceTemplate{"lblDeviceTemplate"};
  ui::Picture Picture1{"Picture1", kProductPicture, 72 * 15, 48 * 15};
  ui::Frame frmUnits{"frmUnits", "Plug-In Display Units"};
  // By display units: 0 Celsius, 1 Fahrenheit.
  std::array<ui::OptionButton, 2> obUnits{ui::OptionButton{"obUnits(0)", "&Metric"},
                                          ui::OptionButton{"obUnits(1)", "&Imperial"}};
  ui::Button cmdApply{"cmdApply", "&Apply"};
  ui::Button cmdCancel{"cmdCancel", "&Cancel"};
  ui::Button cmdRefresh{"cmdRefresh", "&Refresh All"};
  ui::Button cmdExit{"cmdExit", "&Exit"};
  ui::Button cmdHelp{"cmdHelp", ""};
  ui::Button cmdViewLog{"cmdViewLog", ""};
  ui::Button cmdSettings{"cmdSettings", ""};
  ui::Button cmdDebug{"cmdDebug", ""};
  ui::TextField txtDebug{"txtDebug"};
  ui::StatusBar StatusBar{"StatusBar", 3};

 protected:
  void OnLoad() override;
  void OnActivate() override;
  bool OnQueryUnload(ui::CloseReason reason) override;
  void OnUnload() override;
  void OnHelp() override;
  bool OnEscape() override;

 private:
  ui::Box MakeLayout();
  // Settings in the plug-in's machine key: the units are 0 only for the stored text "0", else 1; the debug
  // mode is 1 if the stored number rounds to 1, else 0.
  void GetDisplayUnits();
  void SetDisplayUnits();
  void GetDebug();
  void TakeObjectServer(const lns::ObjectServer& made);
  void ReleaseObjectServer();
  void ConfirmExit();
  /// At once, or at the next step of a running operation.
  void EndSoon();
  void ConnectEditing();
  void Run(const std::string& action, const std::function<void(editing::OpenDevice&)>& pass);
  void SwitchUnits(std::int16_t units);
  void Apply();
  void Refresh();
  void ReadAgain();
  void ShowUnits();
  void ShowDevice();
  void SetUpScreen(int model_number);

  void Open(const std::string& path, const lns::AppDevice& device, const lns::LonMarkObject& object);
  void Configure(const lns::AppDevice& device, const lns::LonMarkObject& object);
  void PrepareAndLoad(editing::OpenDevice& device);
  bool PrepareLonMarkObjects(editing::OpenDevice& device);
  bool SetLonMarkObjectModes(editing::OpenDevice& device);
  std::string HeadingOf(const lns::AppDevice& device) const;

  const session::Services& services_;
  lns::ObjectServer object_server_;
  int running_operations_ = 0;
  bool exit_wanted_ = false;
  /// Unused: ends unless a director arrives meanwhile. ForGood: ends in any case.
  enum class Ending { No, Unused, ForGood } ending_ = Ending::No;
  lonworks::ResourceFiles resource_files_;

  editing::PendingEdits pending_;
  editing::Context editing_context_;
  /// Never null; an empty device if none is open.
  std::shared_ptr<editing::OpenDevice> device_;
  editing::FieldEditing fields_;
  transfer::SettingsMenu settings_menu_;
  ObjectServerEvents events_;
  std::unique_ptr<platform::Subscription> subscription_;
};

}  // namespace plugin
