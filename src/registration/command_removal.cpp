#include "registration/command_removal.h"

#include <string>

#include "lns/members.h"
#include "platform/error.h"
#include "registration/command_registration.h"
#include "registration/names.h"
#include "registration/plug_in_templates.h"
#include "text/strings.h"

namespace registration {
namespace {

using activity::LogAndGoOn;
using platform::IgnoreFailure;

class Visit {
 public:
  Visit(const session::Services& services, bool exhaustive)
      : services_(services), session_(services.session), exhaustive_(exhaustive) {}

  void Network(const lns::Network& network, bool first) {
    session_.CurrentNetwork = network;
    Try("Error reading the name of a network", [this] { name_ = session_.CurrentNetwork.Name(); });
    Show("Opening " + name_ + "...");
    if (Try("Error opening the network", [this] { session_.CurrentNetwork.Open(); }) && OpenSystem()) {
      Show("Deregister commands...");
      Try("Error removing commands", [&] { RemoveCommandsAndTemplates(services_, exhaustive_, first); });
    }
    // They may fail to close if they did not open.
    IgnoreFailure([this] { session_.CurrentSystem.Close(); });
    IgnoreFailure([this] { session_.CurrentNetwork.Close(); });
    session_.CurrentSystem = {};
    session_.CurrentNetwork = {};
  }

 private:
  bool OpenSystem() {
    lns::NetworkServiceDevice device;
    lns::NetworkInterface former;
    Try("Error finding the system",
        [&] { session_.CurrentSystem = session_.CurrentNetwork.Systems().Item(1); });
    // If the interface cannot be read, it cannot be restored, so it is not removed.
    const bool known = Try("Error reading the network interface", [&] {
      device = session_.CurrentSystem.NetworkServiceDevice();
      former = device.NetworkInterface();
    });
    if (known) Try("Error removing the network interface", [&] { device.SetNetworkInterface({}); });
    Show("Opening " + name_ + "...\r\nEngineered system mode");
    if (Try("Error opening the system in engineered mode", [this] { session_.CurrentSystem.Open(); }))
      return true;
    if (known) Try("Error restoring the network interface", [&] { device.SetNetworkInterface(former); });
    const std::string interface_name = platform::ValueOr(std::string(), [&] { return former.Name(); });
    if (!interface_name.empty())
      Show("Opening " + name_ + "...\r\nNetwork Interface '" + interface_name + "'");
    return Try("Error opening the system", [this] { session_.CurrentSystem.Open(); });
  }

  template <class Step>
  bool Try(const char* action, Step&& step) {
    return LogAndGoOn(services_.log, action, name_, step);
  }

  void Show(const std::string& status) const {
    if (session_.Interactive) IgnoreFailure([&] { services_.progress.DisplayStatus(status); });
  }

  const session::Services& services_;
  session::Session& session_;
  bool exhaustive_;
  std::string name_;
};

class Removal {
 public:
  explicit Removal(const session::Services& services)
      : log_(services.log), server_(services.identity.PlugInProgID) {}

  void FromSystem(const lns::System& system) const {
    const Place place(system);
    ForEachIn<lns::DeviceTemplate>(
        place, [&] { return system.TemplateLibrary().DeviceTemplates(); },
        [this](const lns::DeviceTemplate& each) {
          const Place owner(each);
          From(each, owner);
          FromObjects(owner, [&] { return each.Interface().LonMarkObjects(); });
        });
    ForEachIn<lns::AppDevice>(
        place, [&] { return system.Subsystems().Item(lns::members::kAllDevices).AppDevices(); },
        [this](const lns::AppDevice& each) {
          // A discovered device may have none.
          const auto interface = platform::ValueOr(lns::Interface(), [&] { return each.Interface(); });
          if (interface) FromObjects(Place(each), [&] { return interface.LonMarkObjects(); });
        });
    From(system, place);
  }

  /// Removes the plug-in's commands from an object. A command that cannot be read counts as another
  /// plug-in's.
  template <class Owner>
  void From(const Owner& owner, const Place& place) const {
    Try("commands", place, [&] {
      const lns::ComponentApps apps = owner.ComponentApps();
      // Backwards, because the commands after a removed one move up.
      for (std::int32_t ordinal = apps.Count(); ordinal >= 1; --ordinal) {
        lns::ComponentApp app;
        std::string server;
        Try("a command", place, [&] {
          app = apps.Item(ordinal);
          server = app.RegisteredServer();
        });
        if (!text::EqualIgnoringCase(server, server_)) continue;
        const std::string command = "command " + NameOf(app);
        if (Try(command, place, [&] { apps.Remove(ordinal); }))
          log_.LogCommand("Removing " + command, place.Text());
      }
    });
  }

  /// Runs a step of the removal; logs its failure.
  template <class Step>
  bool Try(const std::string& what, const Place& place, Step&& step) const {
    return LogAndGoOn(
        log_, "Error removing " + what, [&] { return place.Text(); }, step);
  }

 private:
  template <class T>
  void ForEachIn(const Place& place, const std::function<lns::Collection<T>()>& get,
                 const std::function<void(const T&)>& step) const {
    Try("commands", place, [&] {
      for (const auto& item : get().Items()) Try("commands", place, [&] { step(item); });
    });
  }

  void FromObjects(const Place& owner,
                   const std::function<lns::Collection<lns::LonMarkObject>()>& get) const {
    ForEachIn<lns::LonMarkObject>(
        owner, get, [&](const lns::LonMarkObject& object) { From(object, Place(object, owner)); });
  }

  activity::fLog& log_;
  std::string server_;
};

}  // namespace

void RemovePlugInFromNetworks(const session::Services& services, bool exhaustive,
                              const std::function<lns::ObjectServer()>& object_server) {
  session::Session& session = services.session;
  const auto attempt = [&](const char* action, auto step) { LogAndGoOn(services.log, action, "", step); };
  session.SupportedCommands = session::MakeSupportedCommands(services.program);
  if (session.Interactive)
    IgnoreFailure([&] { services.progress.DisplayStatus("Opening the Object Server..."); });
  attempt("Error finding the object server", [&] { session.ObjectServer = object_server(); });
  attempt("Error setting the remote flag", [&] { session.ObjectServer.SetRemoteFlag(false); });
  attempt("Error opening the object server", [&] { session.ObjectServer.Open(); });
  attempt("Error reading the networks", [&] {
    for (const auto& network : session.ObjectServer.Networks().Items())
      attempt("Error reading a network",
              [&] { Visit(services, exhaustive).Network(network, network.ordinal() == 1); });
  });
  if (session.Interactive) {
    services.progress.Close();
    services.desktop.Yield();
  }
  attempt("Error closing the object server", [&] { session.ObjectServer.Close(); });
  session.ObjectServer = {};
}

void RemoveCommandsAndTemplates(const session::Services& services, bool exhaustive, bool first_network) {
  // The message loop may run here, and a director may open another network.
  const lns::System system = services.session.CurrentSystem;
  const lns::ObjectServer server = services.session.ObjectServer;
  const PlugInTemplates library(services);
  const Removal removal(services);
  removal.FromSystem(system);
  if (first_network) removal.From(server, Place(server));
  if (!exhaustive) return;
  using Unused = PlugInTemplates::Unused;
  removal.Try("unused device templates", Place(system),
              [&] { library.RemoveUnused(services.session.Interactive ? Unused::Ask : Unused::RemoveOwn); });
}

}  // namespace registration
