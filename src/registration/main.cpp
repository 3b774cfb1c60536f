#include "registration/main.h"

#include "platform/attempt.h"
#include "registration/network_visits.h"
#include "startup/command_line.h"
#include "text/strings.h"

namespace registration {

using platform::Attempt;

bool MMain::Main(std::string_view command_line) {
  using Role = startup::CommandLine::Role;
  const startup::CommandLine asked = startup::ParseCommandLine(command_line);
  if (asked.role == Role::RegisterPlugIn) {
    Attempt([this] { RegisterPlugIn(with_, false); });
    return false;
  }
  if (asked.role == Role::DeregisterPlugIn) {
    Attempt([&] { DeregisterPlugIn(asked.deregistration_mode, false); });
    return false;
  }
  // No second copy is started to register the class when there is no command line: the window does it, so
  // that it tells the truth when it says "registered".
  const bool registers_class = text::Trim(command_line).empty();
  fRegisterPlugIn::Actions actions;
  actions.register_plug_in = [this, registers_class] {
    RegisterPlugIn(with_, true, registers_class ? process_.register_class : nullptr);
  };
  actions.deregister_plug_in = [this](std::int32_t mode) { DeregisterPlugIn(mode, true); };
  actions.end_plug_in = process_.end_plug_in;
  actions.help_file = startup::HelpFile(with_.program);
  window_ = std::make_unique<fRegisterPlugIn>(with_.desktop, with_.identity.PlugInName, std::move(actions));
  window_->Show();
  return true;
}

void MMain::DeregisterPlugIn(std::int32_t mode, bool interactive) {
  constexpr std::int32_t kComplete = 0;
  constexpr std::int32_t kExhaustive = 1;
  with_.Interactive = interactive;
  if (mode == kComplete || mode == kExhaustive)
    RemovePlugInFromNetworks(with_, mode == kExhaustive, process_.object_server);
  UnregisterPlugIn(with_, interactive);
}

}  // namespace registration
