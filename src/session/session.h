#pragma once

#include <cstdint>
#include <string>

#include "lns/object_model.h"
#include "session/supported_commands.h"

namespace session {

/// The process's state that all automation objects and the main window share. One copy, used from the
/// user-interface thread.
struct Session {
  std::int16_t InstanceCount = 0;
  lns::ObjectServer ObjectServer;
  bool ServerOpen = false;
  bool NetworkOpen = false;
  std::string CurrentNetworkName;
  lns::Network CurrentNetwork;
  lns::System CurrentSystem;
  /// The path of the last accepted command.
  std::string CurrentObjectPath;
  std::string DevelopmentProgramIdValue;
  session::SupportedCommands SupportedCommands;
  /// The object server's remote flag at the last registration of commands; false where this process made
  /// none.
  bool RegistrationRemote = false;
  /// Deregistration was asked for by a user at a window, who is shown its progress and asked questions.
  bool Interactive = false;

  /// 0 SI (Celsius), 1 US (Fahrenheit).
  std::int16_t DisplayUnits = 0;
  /// 1 shows the debug controls.
  std::int16_t DebugMode = 0;

  /// A network is being opened, commands are being registered: neither can begin a second time meanwhile.
  bool Opening = false;
  bool Registering = false;

  int RunningOperations = 0;
  bool Busy() const { return RunningOperations > 0; }
};

/// Marks the session busy with one long operation at a time; the message loop runs inside it, so that calls
/// and clicks come in that must not start another one.
class Operation {
 public:
  explicit Operation(Session& session) : session_(session) { ++session_.RunningOperations; }
  ~Operation() { --session_.RunningOperations; }
  Operation(const Operation&) = delete;
  Operation& operator=(const Operation&) = delete;

 private:
  Session& session_;
};

/// Raises one of the session's flags for as long as it lives.
class Raised {
 public:
  explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
  ~Raised() { flag_ = false; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

 private:
  bool& flag_;
};

}  // namespace session
