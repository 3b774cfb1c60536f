#include "registration/command_registration.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "lns/members.h"
#include "platform/attempt.h"
#include "registration/names.h"
#include "registration/template_library.h"
#include "text/strings.h"

namespace registration {
namespace {

using platform::Attempt;
using session::SupportedCommand;

const std::string kErrorAdding = "Error adding command ";

// What a command's program ID can name. Only device templates have one.
enum TemplateKind : std::int32_t {
  kHardwareTemplate = 1,
  kBuildTemplate = 2,
  kDeviceTemplate = 3,
  kProgramTemplate = 4
};

/// Calls the step for each item of a collection, in order.
template <class T>
void ForEach(const lns::Collection<T>& items, const std::function<void(const T&)>& step) {
  const std::int32_t count = items.Count();
  for (std::int32_t ordinal = 1; ordinal <= count; ++ordinal) step(items.Item(ordinal));
}

class Run {
 public:
  explicit Run(const Surroundings& with) : with_(with), system_(with.session.CurrentSystem), library_(with) {}

  bool RegisterAll() {
    Attempt([this] { with_.session.RegistrationRemote = with_.session.ObjectServer.RemoteFlag(); });
    bool all = true;
    for (SupportedCommand& command : with_.session.SupportedCommands)
      all = Try([&] { RegisterEverywhere(command); }) && all;
    return all && Try([this] { MarkSystem(); });
  }

 private:
  /// Runs a step and shows why it failed, the same reason once.
  bool Try(const std::function<void()>& step) {
    std::string reason;
    try {
      step();
      return true;
    } catch (const std::exception& failure) {
      reason = failure.what();
    }
    if (shown_.insert(reason).second)
      with_.desktop.ShowMessage({reason, startup::kProgramTitle, ui::Icon::Critical});
    return false;
  }

  void RegisterEverywhere(SupportedCommand& command) {
    command.CommandText = CommandName(command.CommandId);
    const std::string type = ObjectTypeName(static_cast<std::int16_t>(command.ObjectType));
    with_.progress.DisplayStatus("Adding command " + command.CommandText + " for " + type + " objects...");
    if (command.TemplateKind != kDeviceTemplate) throw Failure(kErrorAdding + command.CommandName);
    const lns::DeviceTemplate device_template = TemplateOf(command);
    if (command.ObjectType == session::kLonMarkObjectType) {
      AddToObjects(device_template.Interface(), command);
      AddToDevices(command);
      return;
    }
    const std::string template_name = device_template.Name();
    const lns::ComponentApps apps = device_template.ComponentApps();
    const lns::ComponentApp added = AddOnce(apps, command);
    if (!added || !AskForDefault(command, template_name)) return;
    // Taken back where it fails, so that the next try asks again.
    if (!Attempt([&] { added.SetDefaultAppFlag(true); })) {
      Attempt([&] { apps.Remove(command.CommandName); });
      throw Failure(kErrorAdding + command.CommandName);
    }
  }

  void AddToObjects(const lns::Interface& interface, const SupportedCommand& command) const {
    ForEach<lns::LonMarkObject>(interface.LonMarkObjects(), [&](const lns::LonMarkObject& object) {
      AddOnce(object.ComponentApps(), command);
    });
  }

  /// Whether the objects of devices that are there already take part in what their template has is in no
  /// manual.
  void AddToDevices(const SupportedCommand& command) const {
    ForEach<lns::AppDevice>(system_.Subsystems().Item(lns::members::kAllDevices).AppDevices(),
                            [&](const lns::AppDevice& device) {
                              std::string program_id;  // a device that was only found has no template
                              Attempt([&] { program_id = device.DeviceTemplate().ProgramId(); });
                              if (text::EqualIgnoringCase(program_id, command.ProgramId))
                                AddToObjects(device.Interface(), command);
                            });
  }

  /// Rows of one program ID share its template, and its failure: the user is asked for a file once.
  lns::DeviceTemplate TemplateOf(const SupportedCommand& command) {
    if (const auto known = failed_.find(command.ProgramId); known != failed_.end()) throw known->second;
    try {
      return library_.FindOrMake(command);
    } catch (const std::exception& failure) {
      failed_.emplace(command.ProgramId, failure.what());
      throw;
    }
  }

  bool IsOurs(const lns::ComponentApp& app) const {
    return text::EqualIgnoringCase(app.RegisteredServer(), with_.identity.PlugInProgID);
  }

  /// By what it does, or by its name where an earlier try did not get to its end.
  lns::ComponentApp Find(const lns::ComponentApps& apps, const SupportedCommand& command) const {
    lns::ComponentApp found;
    ForEach<lns::ComponentApp>(apps, [&](const lns::ComponentApp& app) {
      if (!found && IsOurs(app) && (Does(app, command) || app.Name() == command.CommandName)) found = app;
    });
    return found;
  }
  static bool Does(const lns::ComponentApp& app, const SupportedCommand& command) {
    return app.CommandId() == command.CommandId && app.ComponentClassId() == command.ObjectType;
  }

  /// The new command, or nothing where it is there already.
  lns::ComponentApp AddOnce(const lns::ComponentApps& apps, const SupportedCommand& command) const {
    lns::ComponentApp app = Find(apps, command);
    if (app && Does(app, command)) {
      UpdateVersion(app);
      return {};
    }
    try {
      if (!app) app = apps.Add(command.CommandName, with_.identity.PlugInProgID, command.ObjectType);
      if (!app) throw Failure("ComponentApp was not created.");
      app.SetDescription(command.CommandDescription);
      // Last, as it tells the next try that nothing is missing.
      app.SetCommandId(command.CommandId);
    } catch (const platform::Error& failure) {
      // A command without its number would be offered and do nothing.
      if (app) Attempt([&] { apps.Remove(command.CommandName); });
      throw Failure(kErrorAdding + command.CommandName + "\r\n" + failure.description());
    }
    UpdateVersion(app);
    return app;
  }

  /// The manual calls the version read-only; directors compare it where it can be set.
  void UpdateVersion(const lns::ComponentApp& app) const {
    Attempt([&] {
      if (app.VersionNumber() != with_.identity.PlugInVersion)
        app.SetVersionNumber(with_.identity.PlugInVersion);
    });
  }

  bool AskForDefault(const SupportedCommand& command, const std::string& template_name) const {
    return with_.desktop.ShowMessage({"Do you wish to make " + command.CommandName +
                                          " the default action for " + template_name + " devices?",
                                      startup::kProgramTitle, ui::Icon::Question, ui::Buttons::YesNo}) ==
           ui::Answer::Yes;
  }

  /// Directors look for a plug-in's "register" command on the system and compare its version.
  void MarkSystem() {
    SupportedCommand mark;
    mark.CommandId = session::kRegisterCommand;
    mark.ObjectType = lns::members::kClassSystem;
    mark.CommandName = with_.identity.PlugInName + " " + CommandName(session::kRegisterCommand);
    mark.CommandDescription = with_.identity.PlugInDescription;
    AddOnce(system_.ComponentApps(), mark);
  }

  const Surroundings& with_;
  lns::System system_;  // of the network that was open at the beginning; another command may open another one
  TemplateLibrary library_;
  std::map<std::string, Failure> failed_;  // by program ID
  std::set<std::string> shown_;
};

class Removal {
 public:
  explicit Removal(const std::string& server) : server_(server) {}

  void FromSystem(const lns::System& system) const {
    ForEachIn<lns::DeviceTemplate>([&] { return system.TemplateLibrary().DeviceTemplates(); },
                                   [this](const lns::DeviceTemplate& each) {
                                     From([&] { return each.ComponentApps(); });
                                     FromObjects([&] { return each.Interface(); });
                                   });
    ForEachIn<lns::AppDevice>(
        [&] { return system.Subsystems().Item(lns::members::kAllDevices).AppDevices(); },
        [this](const lns::AppDevice& each) { FromObjects([&] { return each.Interface(); }); });
    From([&] { return system.ComponentApps(); });
  }

  /// Takes the plug-in's commands out of a collection.
  void From(const std::function<lns::ComponentApps()>& get) const {
    Attempt([&] {
      const lns::ComponentApps apps = get();
      for (std::int32_t ordinal = apps.Count(); ordinal >= 1; --ordinal)
        Attempt([&] {
          if (text::EqualIgnoringCase(apps.Item(ordinal).RegisteredServer(), server_)) apps.Remove(ordinal);
        });
    });
  }

 private:
  template <class T>
  static void ForEachIn(const std::function<lns::Collection<T>()>& get,
                        const std::function<void(const T&)>& step) {
    Attempt([&] {
      const lns::Collection<T> items = get();
      const std::int32_t count = items.Count();
      for (std::int32_t ordinal = 1; ordinal <= count; ++ordinal) Attempt([&] { step(items.Item(ordinal)); });
    });
  }

  void FromObjects(const std::function<lns::Interface()>& get) const {
    ForEachIn<lns::LonMarkObject>(
        [&] { return get().LonMarkObjects(); },
        [this](const lns::LonMarkObject& object) { From([&] { return object.ComponentApps(); }); });
  }

  std::string server_;
};

}  // namespace

bool RegisterCommands(const Surroundings& with) {
  if (!with.session.CurrentSystem) return false;
  return Run(with).RegisterAll();
}

void RemoveCommandsAndTemplates(const Surroundings& with, bool exhaustive, bool first_network) {
  // The message loop may run in here, and a director open another network.
  const lns::System system = with.session.CurrentSystem;
  const lns::ObjectServer server = with.session.ObjectServer;
  const TemplateLibrary library(with);
  const Removal removal(with.identity.PlugInProgID);
  removal.FromSystem(system);
  if (first_network) removal.From([&] { return server.ComponentApps(); });
  if (!exhaustive) return;
  using Unused = TemplateLibrary::Unused;
  Attempt([&] { library.RemoveUnused(with.session.Interactive ? Unused::Ask : Unused::RemoveOwn); });
}

}  // namespace registration
