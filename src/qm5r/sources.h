#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "qm5r/command_line.h"
#include "qm5r/computer.h"
#include "session/session.h"
#include "settings/device_search.h"
#include "settings/file.h"

namespace qm5r {

/// The command cannot be done at all, and why.
struct Failed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Settings from a file or a device.
struct Source {
  /// The file's name or the device's path.
  std::string name;
  settings::ReadDevice device;
};

bool IsFile(std::string_view place);

/// Reads a file and its findings. Throws Failed if it cannot be read.
settings::SettingsFile ReadFile(const Computer& computer, const std::string& file);

/// Writes a whole file or nothing; replaces one only by force. Throws Failed.
void WriteFile(const Options& options, Computer& computer, const std::string& file,
               const std::string& content);

/// The files that a name with "*" stands for, or the name itself. Throws Failed if there are none.
std::vector<std::string> FilesNamed(const Computer& computer, const std::string& name);

/// Reads the settings that places on the command line name, one after the other. Opens the object server and
/// networks when they are needed and closes them at the end.
class Sources {
 public:
  Sources(const Options& options, Computer& computer, settings::Versions versions);
  ~Sources() { CloseSession(session_); }
  Sources(const Sources&) = delete;
  Sources& operator=(const Sources&) = delete;

  /// In the order of the network. Throws Failed if nothing has the name or a file has errors, and the
  /// platform's error if the network cannot be opened.
  void ForEach(const std::string& place, const std::function<void(Source)>& use);

  const settings::Selection& selection() const { return selection_; }

  /// The device at a path; opens its network. Throws the platform's error.
  lns::AppDevice DeviceAt(const std::string& path);
  const std::shared_ptr<lns::Dialect>& dialect() const { return session_.Dialect; }
  bool IsServerLost() const { return session_.ObjectServer && session_.ObjectServer.IsLost(); }

 private:
  void ForEachFile(const std::string& name, const std::function<void(Source)>& use);
  void ForEachDevice(const std::string& place, const std::function<void(Source)>& use);
  void Open(const std::string& network);
  std::vector<std::string> NetworksOf(const text::Pattern& path);
  std::vector<settings::FoundDevice> Find(const text::Pattern& path);
  void Read(std::vector<settings::FoundDevice> found, const std::function<void(Source)>& use);

  const Options& options_;
  Computer& computer_;
  settings::Versions versions_;
  settings::Selection selection_;
  session::Session session_;
  /// The devices beside the one that was asked for last, and the path above them.
  std::string folder_;
  lns::Collection<lns::AppDevice> beside_;
};

}  // namespace qm5r
