#include "registration/main.h"

#include <array>

#include "platform/error.h"
#include "registration/command_removal.h"
#include "registration/names.h"
#include "text/strings.h"

namespace registration {
namespace {

using platform::Shell;

constexpr std::int16_t kFlagOff = -1;
constexpr std::int16_t kFlagOn = 1;

// Flags are deliberately stored as the texts "-1" and "1", never as numbers.
std::string FlagText(std::int16_t flag) { return std::to_string(ForceInRange(kFlagOff, kFlagOn, flag)); }

void ShowInformation(const session::Services& services, const std::string& text) {
  services.desktop.ShowMessage({text, services.identity.PlugInName, ui::Icon::Information});
}

void ShowFailure(const session::Services& services, const std::string& text) {
  services.desktop.ShowMessage({text, startup::kProgramTitle, ui::Icon::Critical});
}

void RegisterClassByChild(const session::Services& services) {
  services.shell.Start(services.program.Path(), "/regserver", Shell::Show::MinimizedWithoutFocus);
}

bool NewerIsRegistered(const session::Services& services) {
  const std::string key = services.identity.PlugInKey();
  return !services.registry.MachineSetting(key, "").empty() &&
         SplitVersion(services.registry.MachineSetting(key, "Version")) >
             SplitVersion(services.identity.PlugInVersion);
}

void WriteKey(const session::Services& services) {
  const startup::Identity& identity = services.identity;
  struct Row {
    const char* value_name;
    std::string text;
  };
  const Row rows[] = {
      {"", identity.PlugInProgID},
      {"Name", identity.PlugInName},
      {"Description", identity.PlugInDescription},
      {"Scope", "2"},  // commands are registered with each system
      {"ManufacturerName", identity.PlugInManufacturerName},
      {"Version", identity.PlugInVersion},
      {"LcaVersion", "3.0"},
      {"Prelaunch", FlagText(kFlagOff)},
      {"MultiObject", FlagText(kFlagOff)},
      {"SingleInstance", FlagText(kFlagOn)},
  };
  for (const Row& row : rows)
    activity::LogAndGoOn(
        services.log, "Error writing the registry value " + std::string(row.value_name), identity.PlugInKey(),
        [&] { services.registry.SetMachineSetting(identity.PlugInKey(), row.value_name, row.text); });
}

}  // namespace

std::int16_t ForceInRange(std::int16_t low, std::int16_t high, std::int16_t& value) {
  if (value < low || value > high) value = 1;
  return value;
}

bool MayRegister(const session::Services& services) {
  return services.registry.MayWriteMachineKey("SOFTWARE\\Classes") &&
         services.registry.MayWriteMachineKey(services.identity.PlugInKey());
}

std::string RegisteredAs(const session::Services& services) {
  const std::string key = services.identity.PlugInKey(), own = services.identity.PlugInVersion;
  if (services.registry.MachineSetting(key, "").empty()) return "Not registered on this computer.";
  const std::string version = services.registry.MachineSetting(key, "Version");
  return "Registered on this computer: version " + (version.empty() ? "unknown" : version) + "." +
         (version == own ? "" : " This is version " + own + ".");
}

void RegisterPlugIn(const session::Services& services, bool interactive,
                    const std::function<void()>& register_class) {
  const startup::Identity& identity = services.identity;
  const bool update = !services.registry.MachineSetting(identity.PlugInKey(), "").empty();
  if (NewerIsRegistered(services)) {
    if (interactive) ShowInformation(services, "A newer version of this plug-in is already registered");
    return;
  }
  const bool class_registered =
      activity::LogAndGoOn(services.log, "Error registering the automation class", identity.PlugInProgID,
                           [&] { register_class ? register_class() : RegisterClassByChild(services); });
  if (!class_registered && interactive) {
    // Deliberately no blank before "registration".
    ShowFailure(services, "Plug-in " + identity.PlugInProgID + "registration as COM server failed");
    return;
  }
  WriteKey(services);
  if (interactive)
    ShowInformation(services,
                    (update ? "Updated version of plug-in registered as " : "Plug-in registered as ") +
                        identity.PlugInProgID);
}

void UnregisterPlugIn(const session::Services& services, bool interactive) {
  const startup::Identity& identity = services.identity;
  try {
    // Deliberately only the file name, unlike for registration.
    services.shell.Start(services.program.ExecutableName() + ".exe", "/unregserver",
                         Shell::Show::MinimizedWithoutFocus);
  } catch (const platform::Error& failure) {
    if (interactive)
      ShowFailure(services, "Plug-in " + identity.PlugInProgID +
                                " deregistration as COM server failed\rVerify that there are not instances "
                                "running\r" +
                                failure.description());
    return;
  }
  const bool deleted = services.registry.DeleteMachineKey(identity.PlugInKey());
  if (!interactive) return;
  // Messages name the key by the registered name and the class by its ProgID.
  ShowInformation(services, "Plug-in " + identity.PlugInName +
                                (deleted ? " deregistered" : " does not exisit in the Windows registery"));
}

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
  // A second copy without these rights still tries and shows why it fails.
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
