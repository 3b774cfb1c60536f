#include "registration/main.h"

#include "platform/failures.h"
#include "registration/command_removal.h"
#include "text/strings.h"

namespace registration {

using Role = startup::CommandLine::Role;

std::optional<int> MMain::Main(std::string_view command_line) {
  const Asked asked = startup::ParseCommandLine(command_line);
  if (asked.role == Role::RegistrationWindow || asked.in_window) {
    // Without a command line the window registers the class itself and starts no second copy, so its
    // "registered" is true.
    OpenWindow(asked, asked.in_window || text::Trim(command_line).empty());
    return std::nullopt;
  }
  if (!MayRegister(services_)) return kAccessDenied;
  platform::IgnoreFailure([&] {
    if (asked.role == Role::RegisterPlugIn)
      RegisterPlugIn(services_, false);
    else
      DeregisterPlugIn(asked.deregistration_mode, false);
  });
  return 0;
}

void MMain::OpenWindow(const Asked& asked, bool registers_class) {
  // A second copy without these rights tries all the same and shows why it fails.
  const bool elevates = !asked.in_window && !MayRegister(services_);
  const auto elevated = [this](const std::string& switches) {
    return services_.shell.StartElevated(services_.program.Path(),
                                         std::string(startup::kInWindow) + switches);
  };
  fRegisterPlugIn::Actions actions;
  actions.needs_elevation = elevates;
  actions.registered_as = RegisteredAs(services_);
  actions.register_plug_in = [=, this] {
    if (elevates) return elevated("/regplugin");
    RegisterPlugIn(services_, true, registers_class ? process_.register_class : nullptr);
    return true;
  };
  actions.deregister_plug_in = [=, this](std::int32_t mode) {
    if (elevates) return elevated("/deregplugin /deregmode:" + std::to_string(mode));
    DeregisterPlugIn(mode, true);
    return true;
  };
  actions.end_plug_in = process_.end_plug_in;
  actions.help_file = startup::HelpFile(services_.program);
  window_ =
      std::make_unique<fRegisterPlugIn>(services_.desktop, services_.identity.PlugInName, std::move(actions));
  window_->Show();
  if (asked.role == Role::RegisterPlugIn) window_->bRegister.UserClicks();
  if (asked.role == Role::DeregisterPlugIn) window_->PressDeregister(asked.deregistration_mode);
}

void MMain::DeregisterPlugIn(std::int32_t mode, bool interactive) {
  constexpr std::int32_t kComplete = 0;
  constexpr std::int32_t kExhaustive = 1;
  services_.session.Interactive = interactive;
  if (mode == kComplete || mode == kExhaustive)
    RemovePlugInFromNetworks(services_, mode == kExhaustive, process_.object_server);
  UnregisterPlugIn(services_, interactive);
}

}  // namespace registration
