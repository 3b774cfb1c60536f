#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "lns/dialect.h"
#include "lns/object_model.h"
#include "platform/program.h"

namespace session {

/// Command and object-type codes as directors send them.
inline constexpr std::int32_t kConfigureCommand = 13;
inline constexpr std::int32_t kRegisterCommand = 50;
inline constexpr std::int32_t kDeregisterCommand = 51;
inline constexpr std::int32_t kAppDeviceType = 7;
inline constexpr std::int32_t kLonMarkObjectType = 28;

/// One command that the plug-in accepts, and what it is registered under.
struct SupportedCommand {
  std::int32_t CommandId = 0;
  std::int32_t ObjectType = 0;
  std::string CommandName;
  std::string CommandDescription;
  bool Enabled = true;
  std::int32_t TemplateKind = 3;
  std::string ProgramId;
  std::string TemplateName;
  std::string CommandText;
};

/// Rows 2 and 3 repeat rows 0 and 1 for the second program ID, also where the two program IDs are equal.
using SupportedCommands = std::array<SupportedCommand, 4>;

SupportedCommands MakeSupportedCommands(const platform::Program& program);

/// The process's state that all automation objects and the main window share. One copy, used from the
/// user-interface thread.
struct Session {
  std::int16_t InstanceCount = 0;
  lns::ObjectServer ObjectServer;
  /// That object server's way with network variables.
  std::shared_ptr<lns::Dialect> Dialect = std::make_shared<lns::Dialect>();
  bool ServerOpen = false;
  bool NetworkOpen = false;
  std::string CurrentNetworkName;
  lns::Network CurrentNetwork;
  lns::System CurrentSystem;
  /// The path of the last command that was to be dispatched; the device on the screen has one of its own.
  std::string CurrentObjectPath;
  std::string DevelopmentProgramIdValue;
  session::SupportedCommands SupportedCommands;
  /// The object server's remote flag at the last registration of commands; false where this process made
  /// none.
  bool RegistrationRemote = false;
  /// Deregistration was asked for by a user at a window, who is shown its progress and asked questions.
  bool Interactive = false;

  /// A network is being opened, commands are being registered: neither can begin a second time meanwhile.
  bool Opening = false;
  bool Registering = false;

  /// Told before a network closes: its objects are of no use from then on.
  std::function<void()> network_closes;
};

/// Opens the object server and a network in the way that the network interface's name asks for: none is
/// local, "Internet" (in these letters) is a lightweight client, any other name is a full client through that
/// interface. Another network that is open is closed once the new one is open, or before it where the remote
/// flag must change, which closes the object server.
///
/// Does nothing where that network is open already under exactly this name. Throws the platform's error; a
/// network that was closed for the new one then counts as not open.
void OpenNetwork(Session& session, const std::string& network_name, const std::string& interface_name);

/// Closes system and network, whatever they say, and forgets them.
void CloseNetwork(Session& session);

/// Closes network and object server and forgets them, so that calls that come in meanwhile may open others.
void CloseSession(Session& session);

/// Sets the remote flag, which an open object server takes only while it is closed for the moment; a network
/// that was open stays closed.
void SetRemote(Session& session, bool remote);

}  // namespace session
