#pragma once

#include <functional>
#include <string>

#include "ui/controls.h"
#include "ui/form.h"

namespace registration {

/// The window for a user who starts the program by hand: register, deregister in a chosen mode, or exit. Each
/// button closes the window when done, which ends the program.
class fRegisterPlugIn : public ui::Form {
 public:
  struct Actions {
    /// False if the user refused the necessary rights: nothing is done and the window stays open.
    std::function<bool()> register_plug_in;
    /// Modes: -1 minimal, 0 complete, 1 exhaustive.
    std::function<bool(std::int32_t mode)> deregister_plug_in;
    /// The system asks the user for administrator rights.
    bool needs_elevation = false;
    std::string registered_as;
    std::function<void()> end_plug_in;
    /// The help file for F1.
    std::string help_file;
  };
  fRegisterPlugIn(ui::Desktop& desktop, std::string plug_in_name, Actions actions);

  /// Chooses the mode and presses Deregister.
  void PressDeregister(std::int32_t mode);

  ui::Button bRegister{"bRegister", "&Register"};
  ui::Button bDeregister{"bDeregister", "&Deregister"};
  ui::Button bExit{"bExit", "E&xit"};
  ui::Frame Frame1{"Frame1", "Deregistration Mode"};
  ui::ChoiceList cmbDeregMode{"cmbDeregMode"};
  ui::Label lblRegistered{"lblRegistered"};
  /// Explains the chosen mode.
  ui::Label lblMode{"lblMode"};

 protected:
  void OnLoad() override;
  bool OnQueryUnload(ui::CloseReason reason) override;
  void OnUnload() override;
  void OnHelp() override;

 private:
  void ChooseMode(int index);
  void ExplainMode();
  void Register();
  void Deregister();
  void Do(const std::function<bool()>& action);
  void LockControls(bool locked);

  std::string plug_in_name_;
  Actions actions_;
};

}  // namespace registration
