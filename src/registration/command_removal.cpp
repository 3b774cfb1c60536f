#include <functional>
#include <string>

#include "lns/members.h"
#include "platform/attempt.h"
#include "registration/command_registration.h"
#include "registration/place.h"
#include "registration/plug_in_templates.h"
#include "text/strings.h"

namespace registration {
namespace {

using platform::Attempt;

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
          lns::Interface interface;  // a device that was only found need not have one
          if (!Attempt([&] { interface = each.Interface(); })) return;
          FromObjects(Place(each), [&] { return interface.LonMarkObjects(); });
        });
    From(system, place);
  }

  /// Takes the plug-in's commands off an object. One that cannot be read counts as another plug-in's.
  template <class Owner>
  void From(const Owner& owner, const Place& place) const {
    Try("commands", place, [&] {
      const lns::ComponentApps apps = owner.ComponentApps();
      // From the last one, as those behind a removed command move.
      for (std::int32_t ordinal = apps.Count(); ordinal >= 1; --ordinal) {
        lns::ComponentApp app;
        std::string server;
        Attempt([&] {
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

  /// Runs a step of removing something; logs why it failed.
  bool Try(const std::string& what, const Place& place, const std::function<void()>& step) const {
    try {
      step();
      return true;
    } catch (const std::exception& failure) {
      log_.LogError(activity::ErrorMessage("Error removing " + what, place.Text() + ": " + failure.what()));
      return false;
    }
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

void RemoveCommandsAndTemplates(const session::Services& services, bool exhaustive, bool first_network) {
  // The message loop may run in here, and a director open another network.
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
