#include "registration/command_registration.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "lns/members.h"
#include "platform/error.h"
#include "registration/names.h"
#include "registration/plug_in_templates.h"
#include "registration/resource_registration.h"
#include "text/strings.h"

namespace registration {
namespace {

using activity::LogAndGoOn;
using session::SupportedCommand;

const std::string kErrorAdding = "Error adding command ";

// The kinds of templates that a command can name. Only device templates have a program ID.
enum TemplateKind : std::int32_t {
  kHardwareTemplate = 1,
  kBuildTemplate = 2,
  kDeviceTemplate = 3,
  kProgramTemplate = 4
};

/// A command that could not be added at a place.
class NotAdded : public Failure {
 public:
  NotAdded(const Place& place, const std::string& reason) : Failure(reason), place_(place.Text()) {}
  const std::string& place() const { return place_; }

 private:
  std::string place_;
};

class Run {
 public:
  explicit Run(const session::Services& services)
      : services_(services), system_(services.session.CurrentSystem), library_(services) {}

  bool RegisterAll() {
    const bool known = LogAndGoOn(services_.log, "Error reading the remote flag", "", [this] {
      services_.session.RegistrationRemote = services_.session.ObjectServer.RemoteFlag();
    });
    // Before templates are created, because then the platform looks for the types of their variables.
    const bool resources = !known || services_.session.RegistrationRemote || AddResources(services_, system_);
    bool all = true;
    for (SupportedCommand& command : services_.session.SupportedCommands)
      all = Try(command, [&] { RegisterEverywhere(command); }) && all;
    const SupportedCommand mark = SystemMark();
    all = all && Try(mark, [&] { AddOnce(system_, Place(system_), mark); });
    // Directors register at each start. If no command is missing, no box keeps them waiting; the log has the
    // failure.
    if (!resources && user_is_there_) Show(kResourcesNotAdded, ui::Icon::Exclamation);
    return all;
  }

 private:
  using Finish = std::function<void(const lns::ComponentApp&)>;

  /// Runs a step of adding the command; logs and shows its failure. Shows a reason that several commands
  /// share, such as a missing template, only once.
  bool Try(const SupportedCommand& command, const std::function<void()>& step) {
    const std::string action = kErrorAdding + command.CommandName;
    std::string reason, result, cause;
    try {
      step();
      return true;
    } catch (const NotAdded& failure) {
      reason = failure.what();
      result = failure.place() + ": " + reason;
      cause = action + reason;
    } catch (const std::exception& failure) {
      reason = result = cause = failure.what();
    }
    const std::string row = activity::ErrorMessage(action, result);
    if (logged_.insert(row).second) services_.log.LogError(row);
    if (shown_.insert(cause).second) Show(action + "\r\n" + reason, ui::Icon::Critical);
    return false;
  }

  void Show(const std::string& text, ui::Icon icon) {
    user_is_there_ = true;
    services_.desktop.ShowMessage({text, startup::kProgramTitle, icon});
  }

  void RegisterEverywhere(SupportedCommand& command) {
    command.CommandText = CommandName(command.CommandId);
    const std::string type = ObjectTypeName(static_cast<std::int16_t>(command.ObjectType));
    services_.progress.DisplayStatus("Adding command " + command.CommandText + " for " + type +
                                     " objects...");
    if (command.TemplateKind != kDeviceTemplate) throw Failure("Its program ID is not a device template's.");
    const lns::DeviceTemplate device_template = TemplateOf(command);
    const Place place(device_template);
    if (command.ObjectType == session::kLonMarkObjectType) {
      AddToObjects(device_template.Interface(), place, command);
      AddToDevices(command);
      return;
    }
    // Read before the command exists, so that only the user's answer comes between the command and its flag.
    const std::string& template_name = place.Name();
    AddOnce(device_template, place, command, [&](const lns::ComponentApp& added) {
      if (AskForDefault(command, template_name)) added.SetDefaultAppFlag(true);
    });
  }

  void AddToObjects(const lns::Interface& interface, const Place& owner,
                    const SupportedCommand& command) const {
    for (const lns::LonMarkObject object : interface.LonMarkObjects().Items())
      AddOnce(object, Place(object, owner), command);
  }

  /// No manual says whether existing devices' objects get the commands of their template.
  void AddToDevices(const SupportedCommand& command) const {
    const auto devices = system_.Subsystems().Item(lns::members::kAllDevices).AppDevices();
    for (const lns::AppDevice device : devices.Items()) {
      // A discovered device has no template.
      const std::string program_id =
          platform::ValueOr(std::string(), [&] { return device.DeviceTemplate().ProgramId(); });
      if (text::EqualIgnoringCase(program_id, command.ProgramId))
        AddToObjects(device.Interface(), Place(device), command);
    }
  }

  /// Rows of one program ID share its template and its failure, so the user is asked for a file only once.
  lns::DeviceTemplate TemplateOf(const SupportedCommand& command) {
    if (const auto known = failed_.find(command.ProgramId); known != failed_.end()) throw known->second;
    try {
      return library_.FindOrMake(command);
    } catch (const std::exception& failure) {
      failed_.emplace(command.ProgramId, failure.what());
      throw;
    }
  }

  /// For an optional step of one command at one place.
  template <class Step>
  void GoOn(const std::string& action, const Place& place, Step&& step) const {
    LogAndGoOn(
        services_.log, "Error " + action, [&] { return place.Text(); }, step);
  }

  bool IsOurs(const lns::ComponentApp& app) const {
    return text::EqualIgnoringCase(app.RegisteredServer(), services_.identity.PlugInProgID);
  }

  /// Finds the command by number and class, or by name if an earlier try did not finish. A command that
  /// cannot be read counts as another plug-in's.
  lns::ComponentApp Find(const lns::ComponentApps& apps, const Place& place,
                         const SupportedCommand& command) const {
    for (const auto& entry : apps.Items()) {
      lns::ComponentApp found;
      GoOn("reading a command", place, [&] {
        const lns::ComponentApp app = entry;
        if (IsOurs(app) && (Does(app, command) || app.Name() == command.CommandName)) found = app;
      });
      if (found) return found;
    }
    return {};
  }
  static bool Does(const lns::ComponentApp& app, const SupportedCommand& command) {
    return app.CommandId() == command.CommandId && app.ComponentClassId() == command.ObjectType;
  }

  /// Adds a missing command to the owner's.
  template <class Owner>
  void AddOnce(const Owner& owner, const Place& place, const SupportedCommand& command,
               const Finish& finish = {}) const {
    std::string done;
    try {
      done = AddTo(owner.ComponentApps(), place, command, finish);
    } catch (const std::exception& failure) {
      throw NotAdded(place, failure.what());
    }
    if (!done.empty()) services_.log.LogCommand(done + command.CommandName, place.Text());
  }

  /// What was done, for the log; empty if the command was already there.
  std::string AddTo(const lns::ComponentApps& apps, const Place& place, const SupportedCommand& command,
                    const Finish& finish) const {
    const lns::ComponentApp found = Find(apps, place, command);
    if (found && Does(found, command)) return Update(apps, place, found, command);
    Complete(apps, place, found, command, finish);
    return "Adding command ";
  }

  /// Creates the command, or completes one without a number.
  void Complete(const lns::ComponentApps& apps, const Place& place, lns::ComponentApp app,
                const SupportedCommand& command, const Finish& finish) const {
    try {
      if (!app) app = apps.Add(command.CommandName, services_.identity.PlugInProgID, command.ObjectType);
      if (!app) throw Failure("ComponentApp was not created.");
      app.SetDescription(command.CommandDescription);
      // Last, because it shows the next try that nothing is missing.
      app.SetCommandId(command.CommandId);
      GoOn("writing the version of command " + command.CommandName, place, [&] {
        if (HasOtherVersion(app)) app.SetVersionNumber(services_.identity.PlugInVersion);
      });
      if (finish) finish(app);
    } catch (const std::exception&) {
      // A command without a number would be offered and do nothing. If a complete one is removed, the next
      // try asks again.
      if (app)
        GoOn("removing command " + command.CommandName, place, [&] { apps.Remove(command.CommandName); });
      throw;
    }
  }

  /// The manual calls the version read-only, set when the command is added. In that case only the system's
  /// mark is added anew: directors compare only its version and register until it matches, and other commands
  /// would lose their default flag.
  std::string Update(const lns::ComponentApps& apps, const Place& place, const lns::ComponentApp& app,
                     const SupportedCommand& command) const {
    bool other = false;
    GoOn("reading the version of command " + command.CommandName, place,
         [&] { other = HasOtherVersion(app); });
    if (!other) return "";
    const bool updated = platform::ValueOr(
        false, [&] { return app.SetVersionNumber(services_.identity.PlugInVersion), true; });
    if (updated) return "Updating command ";
    if (command.CommandId != session::kRegisterCommand) return "";
    GoOn("removing command " + command.CommandName, place, [&] { apps.Remove(app.Name()); });
    if (Find(apps, place, command)) return "";  // an older mark is better than none
    Complete(apps, place, {}, command, {});
    return "Adding command ";
  }
  bool HasOtherVersion(const lns::ComponentApp& app) const {
    return app.VersionNumber() != services_.identity.PlugInVersion;
  }

  bool AskForDefault(const SupportedCommand& command, const std::string& template_name) {
    user_is_there_ = true;
    return services_.desktop.ShowMessage({"Do you wish to make " + command.CommandName +
                                              " the default action for " + template_name + " devices?",
                                          startup::kProgramTitle, ui::Icon::Question, ui::Buttons::YesNo}) ==
           ui::Answer::Yes;
  }

  /// Directors look for a plug-in's "register" command on the system and compare its version.
  SupportedCommand SystemMark() const {
    SupportedCommand mark;
    mark.CommandId = session::kRegisterCommand;
    mark.ObjectType = lns::members::kClassSystem;
    mark.CommandName = services_.identity.PlugInName + " " + CommandName(session::kRegisterCommand);
    mark.CommandDescription = services_.identity.PlugInDescription;
    return mark;
  }

  const session::Services& services_;
  lns::System system_;  // of the network open at the start; a director may open another
  PlugInTemplates library_;
  std::map<std::string, Failure> failed_;  // by program ID
  std::set<std::string> logged_, shown_;
  bool user_is_there_ = false;  // the user has answered a box during this run
};

}  // namespace

bool RegisterCommands(const session::Services& services) {
  const bool registered = services.session.CurrentSystem && Run(services).RegisterAll();
  if (!registered) services.progress.LeaveToUser();
  return registered;
}

}  // namespace registration
