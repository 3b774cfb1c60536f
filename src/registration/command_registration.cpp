#include "registration/command_registration.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "lns/members.h"
#include "platform/attempt.h"
#include "registration/names.h"
#include "registration/place.h"
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

/// A command that could not be added at a place.
class NotAdded : public Failure {
 public:
  NotAdded(const std::string& command, const Place& place, const std::string& reason)
      : Failure(kErrorAdding + command + "\r\n" + reason), result_(place.Text() + ": " + reason) {}
  /// What the log says of it.
  const std::string& result() const { return result_; }

 private:
  std::string result_;
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
      all = Try(command, [&] { RegisterEverywhere(command); }) && all;
    const SupportedCommand mark = SystemMark();
    return all && Try(mark, [&] { AddOnce(system_, Place(system_), mark); });
  }

 private:
  using Finish = std::function<void(const lns::ComponentApp&)>;

  /// Runs a step of adding the command; logs and shows why it failed, the same reason once.
  bool Try(const SupportedCommand& command, const std::function<void()>& step) {
    std::string reason, result;
    try {
      step();
      return true;
    } catch (const NotAdded& failure) {
      reason = failure.what();
      result = failure.result();
    } catch (const std::exception& failure) {
      reason = result = failure.what();
    }
    const std::string row = activity::ErrorMessage(kErrorAdding + command.CommandName, result);
    if (logged_.insert(row).second) with_.log.LogError(row);
    if (shown_.insert(reason).second)
      with_.desktop.ShowMessage({reason, startup::kProgramTitle, ui::Icon::Critical});
    return false;
  }

  void RegisterEverywhere(SupportedCommand& command) {
    command.CommandText = CommandName(command.CommandId);
    const std::string type = ObjectTypeName(static_cast<std::int16_t>(command.ObjectType));
    with_.progress.DisplayStatus("Adding command " + command.CommandText + " for " + type + " objects...");
    if (command.TemplateKind != kDeviceTemplate) throw Failure("Its program ID is no device template's.");
    const lns::DeviceTemplate device_template = TemplateOf(command);
    const Place place(device_template);
    if (command.ObjectType == session::kLonMarkObjectType) {
      AddToObjects(device_template.Interface(), place, command);
      AddToDevices(command);
      return;
    }
    // Read before the command is there: nothing but the answer stands between the command and its flag.
    const std::string& template_name = place.Name();
    AddOnce(device_template, place, command, [&](const lns::ComponentApp& added) {
      if (AskForDefault(command, template_name)) added.SetDefaultAppFlag(true);
    });
  }

  void AddToObjects(const lns::Interface& interface, const Place& owner,
                    const SupportedCommand& command) const {
    ForEach<lns::LonMarkObject>(interface.LonMarkObjects(), [&](const lns::LonMarkObject& object) {
      AddOnce(object, Place(object, owner), command);
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
                                AddToObjects(device.Interface(), Place(device), command);
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

  /// Adds the command to those of the owner where it is not there already.
  template <class Owner>
  void AddOnce(const Owner& owner, const Place& place, const SupportedCommand& command,
               const Finish& finish = {}) const {
    std::string done;
    try {
      done = AddTo(owner.ComponentApps(), command, finish);
    } catch (const std::exception& failure) {
      throw NotAdded(command.CommandName, place, failure.what());
    }
    if (!done.empty()) with_.log.LogCommand(done + command.CommandName, place.Text());
  }

  /// What was done, as the log calls it; nothing where the command is there already.
  std::string AddTo(const lns::ComponentApps& apps, const SupportedCommand& command,
                    const Finish& finish) const {
    lns::ComponentApp app = Find(apps, command);
    if (app && Does(app, command)) return UpdateVersion(app) ? "Updating command " : "";
    try {
      if (!app) app = apps.Add(command.CommandName, with_.identity.PlugInProgID, command.ObjectType);
      if (!app) throw Failure("ComponentApp was not created.");
      app.SetDescription(command.CommandDescription);
      // Last, as it tells the next try that nothing is missing.
      app.SetCommandId(command.CommandId);
      UpdateVersion(app);
      if (finish) finish(app);
    } catch (const std::exception&) {
      // A command without its number would be offered and do nothing; where one with its number is taken
      // back, the next try asks again.
      if (app) Attempt([&] { apps.Remove(command.CommandName); });
      throw;
    }
    return "Adding command ";
  }

  /// The manual calls the version read-only; directors compare it where it can be set.
  bool UpdateVersion(const lns::ComponentApp& app) const {
    bool updated = false;
    Attempt([&] {
      if (app.VersionNumber() == with_.identity.PlugInVersion) return;
      app.SetVersionNumber(with_.identity.PlugInVersion);
      updated = true;
    });
    return updated;
  }

  bool AskForDefault(const SupportedCommand& command, const std::string& template_name) const {
    return with_.desktop.ShowMessage({"Do you wish to make " + command.CommandName +
                                          " the default action for " + template_name + " devices?",
                                      startup::kProgramTitle, ui::Icon::Question, ui::Buttons::YesNo}) ==
           ui::Answer::Yes;
  }

  /// Directors look for a plug-in's "register" command on the system and compare its version.
  SupportedCommand SystemMark() const {
    SupportedCommand mark;
    mark.CommandId = session::kRegisterCommand;
    mark.ObjectType = lns::members::kClassSystem;
    mark.CommandName = with_.identity.PlugInName + " " + CommandName(session::kRegisterCommand);
    mark.CommandDescription = with_.identity.PlugInDescription;
    return mark;
  }

  const Surroundings& with_;
  lns::System system_;  // of the network that was open at the beginning; another command may open another one
  TemplateLibrary library_;
  std::map<std::string, Failure> failed_;  // by program ID
  std::set<std::string> logged_, shown_;
};

}  // namespace

bool RegisterCommands(const Surroundings& with) {
  const bool registered = with.session.CurrentSystem && Run(with).RegisterAll();
  if (!registered) with.progress.LeaveToUser();
  return registered;
}

}  // namespace registration
