#include "session/session.h"

#include <utility>

#include "platform/error.h"
#include "startup/identity.h"
#include "text/strings.h"

namespace session {

SupportedCommands MakeSupportedCommands(const platform::Program& program) {
  using namespace startup;
  SupportedCommands commands;
  for (std::size_t i = 0; i < commands.size(); ++i) {
    const bool is_device = i % 2 == 1, is_second = i >= 2;
    SupportedCommand& row = commands[i];
    row.CommandId = kConfigureCommand;
    row.ObjectType = is_device ? kAppDeviceType : kLonMarkObjectType;
    row.CommandName = program.StringResource(is_device ? kDeviceCommandNameText : kObjectCommandNameText);
    row.CommandDescription =
        program.StringResource(is_device ? kDeviceCommandDescriptionText : kObjectCommandDescriptionText);
    row.ProgramId = program.StringResource(is_second ? kSecondProgramIdText : kFirstProgramIdText);
    row.TemplateName = program.StringResource(is_second ? kSecondTemplateNameText : kFirstTemplateNameText);
  }
  return commands;
}

namespace {

using lns::SkipIfUnknown;
using platform::IgnoreFailure;

constexpr const char* kInternet = "Internet";

/// Closes the object, unless it is known to be closed.
template <class T>
void CloseIfOpen(const T& object) {
  if (object && platform::ValueOr(true, [&] { return object.IsOpen(); }))
    IgnoreFailure([&] { object.Close(); });
}

void CloseServer(Session& session) {
  CloseNetwork(session);
  session.ServerOpen = false;
  session.ObjectServer.Close();
}

/// An object server accepts the flag only while it is closed.
void ChangeRemoteFlag(Session& session, bool remote) {
  if (session.ObjectServer.IsOpen()) CloseServer(session);
  session.ObjectServer.SetRemoteFlag(remote);
}

/// Opens the object server. True for an Internet session, which is only possible if the object server was
/// already remote. The order of these checks is deliberate.
bool OpenServer(Session& session, const std::string& interface_name, bool was_remote) {
  const lns::ObjectServer& server = session.ObjectServer;
  if (server.IsOpen()) CloseServer(session);
  SkipIfUnknown([&] { server.SetOpenOption(false); });
  bool internet = false;
  if (was_remote) {
    internet = interface_name == kInternet;
    const std::int32_t others = server.Flags() & ~(lns::members::kFlagUseTcp | lns::members::kFlagUseNsi);
    server.SetFlags(others | (internet ? lns::members::kFlagUseTcp : lns::members::kFlagUseNsi));
  }
  server.Open();
  session.ServerOpen = true;
  return internet;
}

/// Separate steps, because an object server that refuses one works without it.
void PrepareInternetSystem(const lns::System& system) {
  IgnoreFailure([&] { system.SetDsPause(true); });
  IgnoreFailure([&] { system.SetDsMode(0); });
  IgnoreFailure([&] { system.SetDsPause(false); });
}

lns::NetworkInterface RemoteInterface(Session& session, const std::string& name) {
  try {
    return session.ObjectServer.RemoteNetworkInterfaces().Item(name);
  } catch (const platform::Error& error) {
    if (!lns::IsUnknownMember(error)) throw;
  }
  lns::NetworkInterface found = session.ObjectServer.NetworkInterfaces().Item(name);
  session.Dialect->Note("remote interfaces in the list of all interfaces");
  return found;
}

}  // namespace

void OpenNetwork(Session& session, const std::string& network_name, const std::string& interface_name) {
  if (network_name == session.CurrentNetworkName && session.NetworkOpen) return;
  const lns::ObjectServer& server = session.ObjectServer;
  const bool was_remote = server.RemoteFlag(), remote = !interface_name.empty();
  if (was_remote != remote) ChangeRemoteFlag(session, remote);
  bool internet = false;
  if (!session.ServerOpen) internet = OpenServer(session, interface_name, was_remote);
  if (!interface_name.empty() && !internet)
    server.SetActiveRemoteNI(RemoteInterface(session, interface_name));

  const lns::Network network = server.Networks().Item(network_name);
  // The previous network stays open until the new one is open, unless both may be the same network in
  // different letter case.
  const bool keeps_former =
      session.NetworkOpen && !text::EqualIgnoringCase(network_name, session.CurrentNetworkName);
  if (!keeps_former) CloseNetwork(session);
  network.Open();
  if (keeps_former) CloseNetwork(session);
  session.CurrentNetwork = network;
  session.CurrentNetworkName = network.Name();
  const lns::System system = network.Systems().Item(1);
  session.CurrentSystem = system;
  system.Open();
  if (internet) PrepareInternetSystem(system);
  SkipIfUnknown([&] { system.BeginNssIdleEvent(lns::members::kIdleEventMilliseconds); });
  // A director may have closed the object server during these calls.
  if (session.CurrentNetwork != network)
    throw platform::Error(0, "Session", "The network was closed while it was being opened.");
  session.NetworkOpen = true;
}

void CloseNetwork(Session& session) {
  if (session.CurrentNetwork && session.network_closes) session.network_closes();
  // A director's calls may arrive during these.
  const lns::System system = std::exchange(session.CurrentSystem, {});
  const lns::Network network = std::exchange(session.CurrentNetwork, {});
  session.NetworkOpen = false;
  CloseIfOpen(system);
  CloseIfOpen(network);
}

void CloseSession(Session& session) {
  const lns::ObjectServer server = std::exchange(session.ObjectServer, {});
  session.ServerOpen = false;
  CloseNetwork(session);
  CloseIfOpen(server);
}

void SetRemote(Session& session, bool remote) {
  const bool was_open = session.ObjectServer.IsOpen();
  if (was_open) CloseServer(session);
  session.ObjectServer.SetRemoteFlag(remote);
  if (was_open) session.ObjectServer.Open();
  session.ServerOpen = was_open;
}

}  // namespace session
