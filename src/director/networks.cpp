#include "director/networks.h"

#include <algorithm>
#include <map>
#include <ostream>
#include <vector>

#include "lns/dialect.h"
#include "lns/members.h"
#include "lns/object_path.h"
#include "platform/error.h"
#include "session/session.h"
#include "text/strings.h"

namespace director {
namespace {

void PrintSubsystem(const lns::Subsystem& subsystem, const std::string& path, std::ostream& out) {
  for (const lns::AppDevice device : subsystem.AppDevices().Items())
    out << path << '/' << device.Name() << "\tstate " << device.State() << '\t'
        << device.DeviceTemplate().Name() << '\n';
  for (const lns::Subsystem below : subsystem.Subsystems().Items())
    PrintSubsystem(below, path + '.' + below.Name(), out);
}

void PrintNetworkDevices(const OpenedNetwork& opened, std::ostream& out) {
  for (const lns::Subsystem subsystem : opened.system().Subsystems().Items()) {
    const std::string name = subsystem.Name();
    if (!lns::RepeatsDevices(name)) PrintSubsystem(subsystem, SystemPath(opened) + '.' + name, out);
  }
}

std::vector<std::string> NetworkNames(const lns::ObjectServer& server) {
  server.Open();
  std::vector<std::string> names;
  for (const lns::Network network : server.Networks().Items()) names.push_back(network.Name());
  server.Close();
  return names;
}

std::string ReadAs(const lns::NetworkVariable& variable, const std::string& format) {
  try {
    lns::Dialect().SetAccessOption(variable, 0);
    variable.SetFormatType(format);
    return variable.Value();
  } catch (const platform::Error& error) {
    return "(" + error.description() + ")";
  }
}

std::string Hexadecimal(const std::string& decimal_bytes) {
  std::string result;
  for (const std::string& byte : text::Split(decimal_bytes, "\t")) {
    unsigned value = 0;
    for (const char c : byte) {
      if (c < '0' || c > '9') return decimal_bytes;
      value = value * 10 + static_cast<unsigned>(c - '0');
    }
    result += (result.empty() ? "" : " ") + text::HexByte(static_cast<char>(value));
  }
  return result;
}

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

/// Runs the step with the network service device; does not open the system.
template <class Step>
void WithServiceDevice(const lns::ObjectServer& server, const std::string& network_name, const Step& step) {
  const OpenedNetwork opened(server, network_name, OpenedNetwork::Depth::Network);
  step(opened.system().NetworkServiceDevice());
}

}  // namespace

OpenedNetwork::OpenedNetwork(const lns::ObjectServer& server, const std::string& network_name, Depth depth)
    : server_(server) {
  try {
    server_.Open();
    network_ = server_.Networks().Item(network_name);
    network_.Open();
    system_ = network_.Systems().Item(1);
    if (depth == Depth::System) system_.Open();
  } catch (...) {
    Close();
    throw;
  }
}

OpenedNetwork::~OpenedNetwork() { Close(); }

void OpenedNetwork::Close() {
  using platform::IgnoreFailure;
  IgnoreFailure([this] {
    if (system_ && system_.IsOpen()) system_.Close();
  });
  IgnoreFailure([this] {
    if (network_ && network_.IsOpen()) network_.Close();
  });
  IgnoreFailure([this] {
    if (server_.IsOpen()) server_.Close();
  });
}

std::string SystemPath(const OpenedNetwork& opened) {
  return opened.network().Name() + '/' + opened.system().Name();
}

void ForEachNetwork(const lns::ObjectServer& server, const std::string& network_name, std::ostream& out,
                    const std::function<void(const OpenedNetwork&)>& print) {
  if (!network_name.empty()) return print(OpenedNetwork(server, network_name));
  for (const std::string& name : NetworkNames(server)) {
    try {
      print(OpenedNetwork(server, name));
    } catch (const platform::Error& error) {
      out << name << "\tcannot be opened: " << error.description() << '\n';
    }
  }
}

lns::AppDevice DeviceAt(const OpenedNetwork& opened, const std::string& path) {
  const lns::Object found = lns::ResolveObject(session::kAppDeviceType, lns::SplitObjectPath(path),
                                               opened.network(), opened.system());
  if (!found) throw platform::Error(20005, "director", "There is no device " + path);
  return lns::AppDevice(found.reference());
}

void PrintNetworks(const lns::ObjectServer& server, std::ostream& out) {
  for (const std::string& name : NetworkNames(server)) out << name << '\n';
}

void PrintDevices(const lns::ObjectServer& server, const std::string& network_name, std::ostream& out) {
  ForEachNetwork(server, network_name, out, [&](const auto& opened) { PrintNetworkDevices(opened, out); });
}

void PrintDevice(const lns::ObjectServer& server, const std::string& path, std::ostream& out) {
  const OpenedNetwork opened(server, NetworkOf(path));
  const lns::AppDevice device = DeviceAt(opened, path);
  out << "device\t" << device.Name() << "\ntemplate\t" << device.DeviceTemplate().Name() << "\nprogram ID\t"
      << device.ProgramId() << "\nneuron ID\t" << device.NeuronId() << "\nstate\t" << device.State() << '\n';
  for (const lns::NetworkVariable variable : device.Interface().NetworkVariables().Items())
    out << variable.Name() << '\t' << ReadAs(variable, "") << '\t' << Hexadecimal(ReadAs(variable, "RAW"))
        << '\n';
}

void DownloadConfiguration(const lns::ObjectServer& server, const std::string& path) {
  const OpenedNetwork opened(server, NetworkOf(path));
  DeviceAt(opened, path).Interface().DownloadConfigProperties();
}

void UploadConfiguration(const lns::ObjectServer& server, const std::string& path) {
  const OpenedNetwork opened(server, NetworkOf(path));
  DeviceAt(opened, path).Interface().UploadConfigProperties();
}

std::string NetworkOf(const std::string& path) { return path.substr(0, path.find('/')); }

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
