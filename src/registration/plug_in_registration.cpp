#include "registration/plug_in_registration.h"

#include <array>
#include <string>

#include "platform/attempt.h"
#include "registration/version.h"

namespace registration {
namespace {

using platform::Attempt;
using platform::Shell;

constexpr std::int16_t kFlagOff = -1;
constexpr std::int16_t kFlagOn = 1;

// Flags are stored as the texts "-1" and "1", never as numbers, deliberately.
std::string FlagText(std::int16_t flag) { return std::to_string(ForceInRange(kFlagOff, kFlagOn, flag)); }

void Tell(const Surroundings& with, const std::string& text) {
  with.desktop.ShowMessage({text, with.identity.PlugInName, ui::Icon::Information});
}

void TellFailure(const Surroundings& with, const std::string& text) {
  with.desktop.ShowMessage({text, startup::kProgramTitle, ui::Icon::Critical});
}

void RegisterClassByChild(const Surroundings& with) {
  with.shell.Start(with.program.Path(), "/regserver", Shell::Show::MinimizedWithoutFocus);
}

bool NewerIsRegistered(const Surroundings& with) {
  const std::string key = with.identity.PlugInKey();
  return !with.registry.MachineSetting(key, "").empty() &&
         SplitVersion(with.registry.MachineSetting(key, "Version")) >
             SplitVersion(with.identity.PlugInVersion);
}

void WriteKey(const Surroundings& with) {
  const startup::Identity& identity = with.identity;
  struct Row {
    const char* value_name;
    std::string text;
  };
  const std::array<Row, 10> rows = {{
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
  }};
  for (const Row& row : rows)
    Attempt([&] { with.registry.SetMachineSetting(identity.PlugInKey(), row.value_name, row.text); });
}

}  // namespace

std::int16_t ForceInRange(std::int16_t low, std::int16_t high, std::int16_t& value) {
  if (value < low || value > high) value = 1;
  return value;
}

bool MayRegister(const Surroundings& with) {
  return with.registry.MayWriteMachineKey("SOFTWARE\\Classes") &&
         with.registry.MayWriteMachineKey(with.identity.PlugInKey());
}

std::string RegisteredAs(const Surroundings& with) {
  const std::string key = with.identity.PlugInKey(), own = with.identity.PlugInVersion;
  if (with.registry.MachineSetting(key, "").empty()) return "Not registered on this computer.";
  const std::string version = with.registry.MachineSetting(key, "Version");
  return "Registered on this computer: version " + (version.empty() ? "unknown" : version) + "." +
         (version == own ? "" : " This is version " + own + ".");
}

void RegisterPlugIn(const Surroundings& with, bool interactive, const std::function<void()>& register_class) {
  const startup::Identity& identity = with.identity;
  const bool update = !with.registry.MachineSetting(identity.PlugInKey(), "").empty();
  if (NewerIsRegistered(with)) {
    if (interactive) Tell(with, "A newer version of this plug-in is already registered");
    return;
  }
  const bool class_registered =
      Attempt([&] { register_class ? register_class() : RegisterClassByChild(with); });
  if (!class_registered && interactive) {
    // No blank before "registration", deliberately.
    TellFailure(with, "Plug-in " + identity.PlugInProgID + "registration as COM server failed");
    return;
  }
  WriteKey(with);
  if (interactive)
    Tell(with, (update ? "Updated version of plug-in registered as " : "Plug-in registered as ") +
                   identity.PlugInProgID);
}

void UnregisterPlugIn(const Surroundings& with, bool interactive) {
  const startup::Identity& identity = with.identity;
  try {
    // By its file name alone, unlike registration, deliberately.
    with.shell.Start(with.program.ExecutableName() + ".exe", "/unregserver",
                     Shell::Show::MinimizedWithoutFocus);
  } catch (const platform::Error& failure) {
    if (interactive)
      TellFailure(with, "Plug-in " + identity.PlugInProgID +
                            " deregistration as COM server failed\rVerify that there are not instances "
                            "running\r" +
                            failure.description());
    return;
  }
  const bool deleted = with.registry.DeleteMachineKey(identity.PlugInKey());
  if (!interactive) return;
  // The key is spoken of by the registered name, the class by its ProgID.
  Tell(with, "Plug-in " + identity.PlugInName +
                 (deleted ? " deregistered" : " does not exisit in the Windows registery"));
}

}  // namespace registration
