#pragma once

#include <functional>
#include <string>

#include "ui/controls.h"
#include "ui/form.h"

namespace registration {

/// What a user sees who starts the program by hand: register, deregister in a mode of choice, or leave. Every
/// button does its one thing and closes the window, and with it the program.
class fRegisterPlugIn : public ui::Form {
 public:
  struct Actions {
    /// False when nothing was done because the user refused the rights it takes: the window stays.
    std::function<bool()> register_plug_in;
    /// With the mode: -1 minimal, 0 complete, 1 exhaustive.
    std::function<bool(std::int32_t mode)> deregister_plug_in;
    /// The user is to be asked for an administrator's rights.
    bool needs_elevation = false;
    /// A sentence about what is registered now.
    std::string registered_as;
    std::function<void()> end_plug_in;
    /// The help file, which F1 opens.
    std::string help_file;
  };
  fRegisterPlugIn(ui::Desktop& desktop, std::string plug_in_name, Actions actions);

  /// Chooses the mode and presses the button.
  void PressDeregister(std::int32_t mode);

  ui::Button bRegister{"bRegister", "&Register"};
  ui::Button bDeregister{"bDeregister", "&Deregister"};
  ui::Button bExit{"bExit", "E&xit"};
  ui::Frame Frame1{"Frame1", "Deregistration Mode"};
  ui::ChoiceList cmbDeregMode{"cmbDeregMode"};
  ui::Label lblRegistered{"lblRegistered"};
  /// What the chosen mode does.
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
