#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "lns/dialect.h"
#include "lns/members.h"
#include "lns/object_model.h"
#include "platform/program.h"

namespace session {

/// Command and object-type codes that directors send.
using lns::members::kConfigureCommand;
using lns::members::kDeregisterCommand;
using lns::members::kRegisterCommand;
inline constexpr std::int32_t kAppDeviceType = lns::members::kClassAppDevice;
inline constexpr std::int32_t kLonMarkObjectType = lns::members::kClassLonMarkObject;

/// One command that the plug-in accepts, as it is registered.
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

/// Rows 2 and 3 repeat rows 0 and 1 for the second program ID, even if the two are equal.
using SupportedCommands = std::array<SupportedCommand, 4>;

SupportedCommands MakeSupportedCommands(const platform::Program& program);

/// The state that all automation objects and the main window share. One per process, used from the
/// user-interface thread.
struct Session {
  std::int16_t InstanceCount = 0;
  lns::ObjectServer ObjectServer;
  /// How this object server reads and writes network variables.
  std::shared_ptr<lns::Dialect> Dialect = std::make_shared<lns::Dialect>();
  bool ServerOpen = false;
  bool NetworkOpen = false;
  std::string CurrentNetworkName;
  lns::Network CurrentNetwork;
  lns::System CurrentSystem;
  /// The path of the last command; the device on the screen has its own.
  std::string CurrentObjectPath;
  std::string DevelopmentProgramIdValue;
  session::SupportedCommands SupportedCommands;
  /// The object server's remote flag at this process's last registration of commands; initially false.
  bool RegistrationRemote = false;
  /// A user at a window asked for deregistration, and sees its progress and questions.
  bool Interactive = false;

  /// A network is being opened, or commands are being registered: neither can start again meanwhile.
  bool Opening = false;
  bool Registering = false;

  /// Called before a network closes, after which its objects are useless.
  std::function<void()> network_closes;
};

/// Opens the object server and a network. An empty interface name means a local session, exactly "Internet" a
/// lightweight client, any other name a full client through that interface. Closes a previous network once
/// the new one is open, or before that if the remote flag must change, which closes the object server.
///
/// Does nothing if the network is already open under exactly this name. Throws the platform's error;
/// NetworkOpen is then false if the previous network is already closed.
void OpenNetwork(Session& session, const std::string& network_name, const std::string& interface_name);

/// Closes system and network, ignoring failures, and forgets them.
void CloseNetwork(Session& session);

/// Closes network and object server. Forgets them first, so calls that arrive meanwhile can open others.
void CloseSession(Session& session);

/// Sets the remote flag; an open object server is closed for this and opened again, and its network stays
/// closed.
void SetRemote(Session& session, bool remote);

}  // namespace session
