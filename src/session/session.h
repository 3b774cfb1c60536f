#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "lns/dialect.h"
#include "lns/object_model.h"
#include "session/supported_commands.h"

namespace session {

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

}  // namespace session
