#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "lns/object_model.h"
#include "registration/plug_in_registration.h"
#include "registration/registration_form.h"
#include "registration/surroundings.h"

namespace registration {

/// What the program does when it is started by hand: registers or removes itself without a word, or opens the
/// registration window.
class MMain {
 public:
  struct Process {
    /// The object server of the process; throws where none can be had.
    std::function<lns::ObjectServer()> object_server;
    /// Closes what is open and ends the program.
    std::function<void()> end_plug_in;
    /// Registers the automation class from within this process; throws where that is refused.
    std::function<void()> register_class;
  };
  MMain(const Surroundings& surroundings, Process process)
      : with_(surroundings), process_(std::move(process)) {}

  /// True when the registration window is open and the program goes on until it is closed; false when all is
  /// done. Failures end it quietly, but for a window that cannot be made: it throws then.
  bool Main(std::string_view command_line);

  /// Modes 0 and 1 visit every network first, any other goes straight to the removal.
  void DeregisterPlugIn(std::int32_t mode, bool interactive);

  fRegisterPlugIn* window() { return window_.get(); }

 private:
  Surroundings with_;
  Process process_;
  std::unique_ptr<fRegisterPlugIn> window_;
};

}  // namespace registration
