#include "simulator/object_server.h"

#include "simulator/collection.h"
#include "simulator/component_apps.h"
#include "simulator/control.h"
#include "simulator/errors.h"
#include "simulator/network_objects.h"

namespace simulator {

std::unique_ptr<platform::Subscription> ObjectServer::Advise(platform::EventHandler handler) {
  return session().Advise(std::move(handler));
}

Value ObjectServer::Networks() {
  session().ReachableNetworks();  // fails here already where none can be listed
  return Make<Collection>(
      PartPlace("Networks"), 2, [](Collection& self) { return self.session().ReachableNetworks(); },
      [](Collection& self, std::size_t index) {
        const std::string name = self.session().ReachableNetworks()[index];
        return self.Make<Network>(Place{name, "", name}, name);
      });
}

Value ObjectServer::Interfaces(const std::string& part) {
  const auto names = [](Collection& self) {
    std::vector<std::string> result;
    for (const model::Interface& each : self.installation().interfaces) result.push_back(each.name);
    return result;
  };
  return Make<Collection>(PartPlace(part), 15, names, [names](Collection& self, std::size_t index) {
    const std::string name = names(self)[index];
    return self.Make<NetworkInterface>(Place{"LcaNetworkInterface:" + name, "", name}, name);
  });
}

Value ObjectServer::ActiveRemoteInterface() {
  const std::string& name = session().active_interface();
  if (name.empty()) return LateBoundPtr();
  return Make<NetworkInterface>(Place{"LcaNetworkInterface:" + name, "", name}, name);
}

void ObjectServer::SetActiveRemoteInterface(const Value& value) {
  session().SetActiveInterface(InterfaceName(installation(), automation::ToObject(value)));
}

void ObjectServer::SetFlags(const Value& value) {
  const int flags = automation::ToInteger(value);
  const int both = Session::kUseTcp | Session::kUseNsi;
  if ((flags & both) == both) Fail(Code::OutOfRange, "The flags 16 and 32 exclude each other.");
  session().ChangeSettings().flags = flags;
}

Value ObjectServer::Apps() {
  session().RequireOpen();
  return Make<ComponentApps>(PartPlace("ComponentApps"), FindApps([](auto& installation) {
                               return AppLists{&installation.component_apps};
                             }));
}

Value ObjectServer::Control() {
  if (!control_) control_ = std::make_shared<SimulatorControl>(session().simulation().shared_from_this());
  return control_;
}

std::span<const MemberRow<ObjectServer>> ObjectServer::Members() {
  using Self = ObjectServer;
  static const MemberRow<Self> kRows[] = {
      {1, "Networks", [](Self& self, Arguments) { return self.Networks(); }},
      {5, "SingleUserFlag",
       [](Self& self, Arguments) -> Value { return self.session().settings().single_user; },
       [](Self& self, const Value& value) {
         self.session().ChangeSettings().single_user = automation::ToBoolean(value);
       }},
      {6, "RemoteNetworkInterfaces",
       [](Self& self, Arguments) { return self.Interfaces("RemoteNetworkInterfaces"); }},
      {8, "IsOpen", [](Self& self, Arguments) -> Value { return self.session().IsOpen(); }},
      {9, "RemoteFlag", [](Self& self, Arguments) -> Value { return self.session().settings().remote; },
       [](Self& self, const Value& value) {
         self.session().ChangeSettings().remote = automation::ToBoolean(value);
       }},
      {10, "ActiveRemoteNI", [](Self& self, Arguments) { return self.ActiveRemoteInterface(); },
       [](Self& self, const Value& value) { self.SetActiveRemoteInterface(value); }},
      {11, "Flags", [](Self& self, Arguments) -> Value { return self.session().settings().flags; },
       [](Self& self, const Value& value) { self.SetFlags(value); }},
      {12, "Close", nullptr, nullptr,
       [](Self& self, Arguments) -> Value { return self.session().Close(), Value(); }},
      {13, "Open", nullptr, nullptr,
       [](Self& self, Arguments) -> Value { return self.session().Open(), Value(); }},
      {14, "NetworkInterfaces", [](Self& self, Arguments) { return self.Interfaces("NetworkInterfaces"); }},
      {15, "ComponentApps", [](Self& self, Arguments) { return self.Apps(); }},
      {16, "Name", [](Self&, Arguments) -> Value { return std::string("LcaObjectServer"); }},
      ClassRow<0>(17),
      {18, "Simulator", [](Self& self, Arguments) { return self.Control(); }},
  };
  return kRows;
}

}  // namespace simulator
