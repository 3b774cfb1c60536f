#include "simulator/object_server.h"

#include <algorithm>

#include "simulator/component_apps.h"
#include "simulator/control.h"
#include "simulator/device_objects.h"
#include "simulator/errors.h"
#include "simulator/network_objects.h"
#include "simulator/network_variable.h"
#include "simulator/template_objects.h"

namespace simulator {
namespace {

constexpr std::int32_t kSimulator = 18;

class UnusableServer : public automation::Published {
 public:
  explicit UnusableServer(std::string reason) : reason_(std::move(reason)) {}
  std::optional<std::int32_t> MemberNumber(std::string_view) const override { return 1; }
  Value Invoke(const platform::Member&, platform::CallKind, Arguments) override {
    Fail(Code::Internal, reason_);
  }

 private:
  std::string reason_;
};

template <class... T>
bool HaveMember(std::string_view name) {
  const auto has = [name](const auto& row) { return text::EqualIgnoringCase(row.name, name); };
  return (std::ranges::any_of(T::Members(), has) || ...);
}

}  // namespace

std::shared_ptr<automation::Published> MakeUnusableServer(std::string reason) {
  return std::make_shared<UnusableServer>(std::move(reason));
}

bool IsMember(std::string_view name) {
  return HaveMember<ObjectServer, Collection, Network, System, NetworkServiceDevice, NetworkInterface,
                    Subsystem, AppDevices, AppDevice, Interface, LonMarkObject, NetworkVariable,
                    TemplateLibrary, DeviceTemplates, DeviceTemplate, TemplateInterface, ComponentApps,
                    ComponentApp>(name);
}

Value ObjectServer::Invoke(const platform::Member& member, platform::CallKind kind, Arguments arguments) {
  const Row* const row = Find(member);
  if (row && row->number == kSimulator) return PublishedTable::Invoke(row, member, kind, arguments);
  return Simulated::Invoke(member, kind, arguments);
}

std::unique_ptr<platform::Subscription> ObjectServer::Advise(platform::EventHandler handler) {
  return session().Advise(std::move(handler));
}

Value ObjectServer::Networks() {
  session().ReachableNetworks();  // throws here if none can be listed
  return Make<Collection>(
      PartPlace("Networks"), Class::Networks,
      [](Collection& self) { return self.session().ReachableNetworks(); },
      [](Collection& self, const std::string& name) {
        return self.Make<Network>(Place{name, "", name}, name);
      });
}

Value ObjectServer::Interfaces(const std::string& part) {
  const auto names = [](Collection& self) { return stored::NamesOf(self.installation().interfaces); };
  return Make<Collection>(
      PartPlace(part), Class::NetworkInterfaces, names, [](Collection& self, const std::string& name) {
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
  const int both = ClientSession::kUseTcp | ClientSession::kUseNsi;
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
  static const Row kRows[] = {
      Property(1, "Networks", Of<&Self::Networks>),
      Property(
          5, "SingleUserFlag", [](Self& self) { return self.session().settings().single_user; },
          [](Self& self, const Value& value) {
            self.session().ChangeSettings().single_user = automation::ToBoolean(value);
          }),
      Property(6, "RemoteNetworkInterfaces",
               [](Self& self) { return self.Interfaces("RemoteNetworkInterfaces"); }),
      Property(8, "IsOpen", [](Self& self) { return self.session().IsOpen(); }),
      Property(
          9, "RemoteFlag", [](Self& self) { return self.session().settings().remote; },
          [](Self& self, const Value& value) {
            self.session().ChangeSettings().remote = automation::ToBoolean(value);
          }),
      Property(10, "ActiveRemoteNI", Of<&Self::ActiveRemoteInterface>,
               [](Self& self, const Value& value) { self.SetActiveRemoteInterface(value); }),
      Property(
          11, "Flags", [](Self& self) { return self.session().settings().flags; },
          [](Self& self, const Value& value) { self.SetFlags(value); }),
      Function(12, "Close", [](Self& self) { self.session().Close(); }),
      Function(13, "Open", [](Self& self) { self.session().Open(); }),
      Property(14, "NetworkInterfaces", [](Self& self) { return self.Interfaces("NetworkInterfaces"); }),
      Property(15, "ComponentApps", Of<&Self::Apps>),
      Property(16, "Name", [](Self&) { return std::string("LcaObjectServer"); }),
      ClassRow<Class::ObjectServer>(17),
      Property(kSimulator, "Simulator", Of<&Self::Control>),
  };
  return kRows;
}

}  // namespace simulator
