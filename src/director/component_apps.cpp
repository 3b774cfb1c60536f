#include "director/component_apps.h"

#include <map>
#include <ostream>

#include "director/networks.h"
#include "lns/members.h"
#include "session/session.h"
#include "text/strings.h"

namespace director {
namespace {

std::string TemplatePath(const OpenedNetwork& opened, const lns::DeviceTemplate& type) {
  return SystemPath(opened) + "/LcaDeviceTemplate:" + type.Name();
}

void PrintApps(const lns::ComponentApps& apps, const std::string& owner, std::ostream& out) {
  for (const lns::ComponentApp app : apps.Items())
    out << owner << '\t' << app.Name() << '\t' << app.CommandId() << '\t' << app.ComponentClassId() << '\t'
        << app.RegisteredServer() << '\t' << app.VersionNumber()
        << (app.DefaultAppFlag() ? "\tdefault\n" : "\n");
}

void PrintObjects(const lns::Interface& interface, const std::string& owner, std::ostream& out) {
  for (const lns::LonMarkObject object : interface.LonMarkObjects().Items())
    PrintApps(object.ComponentApps(), owner + '/' + object.Name(), out);
}

void PrintNetworkCommands(const OpenedNetwork& opened, std::ostream& out) {
  PrintApps(opened.system().ComponentApps(), SystemPath(opened), out);
  for (const lns::DeviceTemplate type : opened.system().TemplateLibrary().DeviceTemplates().Items()) {
    PrintApps(type.ComponentApps(), TemplatePath(opened, type), out);
    PrintObjects(type.Interface(), TemplatePath(opened, type), out);
  }
}

void PrintNetworkTemplates(const OpenedNetwork& opened, std::ostream& out) {
  const auto devices = opened.system().Subsystems().Item(lns::members::kAllDevices).AppDevices();
  std::map<std::string, int> uses;
  for (const lns::AppDevice device : devices.Items()) ++uses[device.DeviceTemplate().Name()];
  for (const lns::DeviceTemplate type : opened.system().TemplateLibrary().DeviceTemplates().Items())
    out << TemplatePath(opened, type) << '\t' << type.ProgramId() << '\t' << "devices " << uses[type.Name()]
        << '\n';
}

/// Runs the step with the network's service device, without opening the system.
template <class Step>
void WithServiceDevice(const lns::ObjectServer& server, const std::string& network_name, const Step& step) {
  const OpenedNetwork opened(server, network_name, OpenedNetwork::Depth::Network);
  step(opened.system().NetworkServiceDevice());
}

}  // namespace

void PrintCommands(const lns::ObjectServer& server, const std::string& place, std::ostream& out) {
  if (place.find('/') != std::string::npos) {
    const OpenedNetwork opened(server, NetworkOf(place));
    const lns::AppDevice device = DeviceAt(opened, place);
    PrintApps(device.DeviceTemplate().ComponentApps(), place, out);
    return PrintObjects(device.Interface(), place, out);
  }
  if (place.empty()) {
    server.Open();
    PrintApps(server.ComponentApps(), "LcaObjectServer", out);
    server.Close();
  }
  ForEachNetwork(server, place, out, [&](const auto& opened) { PrintNetworkCommands(opened, out); });
}

void PrintTemplates(const lns::ObjectServer& server, const std::string& network_name, std::ostream& out) {
  ForEachNetwork(server, network_name, out, [&](const auto& opened) { PrintNetworkTemplates(opened, out); });
}

Registration RegistrationOf(const lns::ObjectServer& server, const std::string& network_name,
                            const std::string& plug_in) {
  const OpenedNetwork opened(server, network_name);
  Registration registration{SystemPath(opened), std::nullopt};
  for (const lns::ComponentApp app : opened.system().ComponentApps().Items()) {
    if (app.CommandId() != session::kRegisterCommand) continue;
    if (text::EqualIgnoringCase(app.RegisteredServer(), plug_in)) registration.version = app.VersionNumber();
  }
  return registration;
}

std::string InterfaceOf(const lns::ObjectServer& server, const std::string& network_name) {
  std::string name;
  WithServiceDevice(server, network_name, [&](const lns::NetworkServiceDevice& device) {
    if (const lns::NetworkInterface interface = device.NetworkInterface()) name = interface.Name();
  });
  return name;
}

void SetInterface(const lns::ObjectServer& server, const std::string& network_name,
                  const std::string& interface_name) {
  WithServiceDevice(server, network_name, [&](const lns::NetworkServiceDevice& device) {
    lns::NetworkInterface interface;
    if (!interface_name.empty()) interface = server.NetworkInterfaces().Item(interface_name);
    device.SetNetworkInterface(interface);
  });
}

}  // namespace director
