#include "registration/network_visits.h"

#include <string>

#include "platform/attempt.h"
#include "registration/command_registration.h"

namespace registration {
namespace {

using platform::Attempt;

class Visit {
 public:
  Visit(const session::Services& services, bool exhaustive)
      : services_(services), session_(services.session), exhaustive_(exhaustive) {}

  void Network(const lns::Network& network, bool first) {
    session_.CurrentNetwork = network;
    Attempt([this] { name_ = session_.CurrentNetwork.Name(); });
    Show("Opening " + name_ + "...");
    if (Attempt([this] { session_.CurrentNetwork.Open(); }) && OpenSystem()) {
      Show("Deregister commands...");
      Attempt([&] { RemoveCommandsAndTemplates(services_, exhaustive_, first); });
    }
    Attempt([this] { session_.CurrentSystem.Close(); });
    Attempt([this] { session_.CurrentNetwork.Close(); });
    session_.CurrentSystem = {};
    session_.CurrentNetwork = {};
  }

 private:
  bool OpenSystem() {
    lns::NetworkServiceDevice device;
    lns::NetworkInterface former;
    Attempt([&] { session_.CurrentSystem = session_.CurrentNetwork.Systems().Item(1); });
    // An interface that cannot be told could not be put back: it is not taken away.
    const bool told = Attempt([&] {
      device = session_.CurrentSystem.NetworkServiceDevice();
      former = device.NetworkInterface();
    });
    if (told) Attempt([&] { device.SetNetworkInterface({}); });
    Show("Opening " + name_ + "...\r\nEngineered system mode");
    if (Attempt([this] { session_.CurrentSystem.Open(); })) return true;
    if (told) Attempt([&] { device.SetNetworkInterface(former); });
    std::string interface_name;
    Attempt([&] { interface_name = former.Name(); });
    if (!interface_name.empty())
      Show("Opening " + name_ + "...\r\nNetwork Interface '" + interface_name + "'");
    return Attempt([this] { session_.CurrentSystem.Open(); });
  }

  void Show(const std::string& status) const {
    if (services_.session.Interactive) Attempt([&] { services_.progress.DisplayStatus(status); });
  }

  const session::Services& services_;
  session::Session& session_;
  bool exhaustive_;
  std::string name_;
};

}  // namespace

void RemovePlugInFromNetworks(const session::Services& services, bool exhaustive,
                              const std::function<lns::ObjectServer()>& object_server) {
  session::Session& session = services.session;
  session.SupportedCommands = session::MakeSupportedCommands(services.program);
  if (services.session.Interactive)
    Attempt([&] { services.progress.DisplayStatus("Opening the Object Server..."); });
  Attempt([&] { session.ObjectServer = object_server(); });
  Attempt([&] { session.ObjectServer.SetRemoteFlag(false); });
  Attempt([&] { session.ObjectServer.Open(); });
  Attempt([&] {
    for (const auto& network : session.ObjectServer.Networks().Items())
      Attempt([&] { Visit(services, exhaustive).Network(network, network.ordinal() == 1); });
  });
  if (services.session.Interactive) {
    services.progress.Close();
    services.desktop.Yield();
  }
  Attempt([&] { session.ObjectServer.Close(); });
  session.ObjectServer = {};
}

}  // namespace registration
