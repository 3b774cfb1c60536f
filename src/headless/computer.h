#pragma once

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/program.h"
#include "platform/registry.h"
#include "platform/shell.h"
#include "startup/identity.h"
#include "text/strings.h"

namespace headless {

/// A registry in memory. Paths are case-sensitive.
class MemoryRegistry : public platform::Registry {
 public:
  struct Key {
    std::map<std::string, std::string> texts;
  };
  std::map<std::string, Key> machine;  // by full path; a key exists with all its parents
  std::map<std::string, Key> user;
  /// Without administrator rights the machine's keys are read-only.
  bool standard_user = false;
  /// Called before each operation; true makes it fail.
  std::function<bool()> fails;
  bool Fails() const { return fails && fails(); }
  /// A key that cannot be deleted.
  std::string undeletable;

  std::unique_ptr<platform::RegistryKey> Open(Hive hive, const std::string& path, Access access) override;
  std::unique_ptr<platform::RegistryKey> Create(Hive hive, const std::string& path) override;
  bool Delete(Hive hive, const std::string& path) override;
  bool RefusesWrites(Hive hive) const { return standard_user && hive == Hive::LocalMachine; }

 private:
  std::map<std::string, Key>& Of(Hive hive) { return hive == Hive::LocalMachine ? machine : user; }
};

/// The program, with its real string table.
class BuiltInProgram : public platform::Program {
 public:
  explicit BuiltInProgram(Version version) : version_(version) {}

  std::string time_of_day = "12:34:56";

  std::string StringResource(int number) const override { return std::string(startup::BuiltInText(number)); }
  Version FileVersion() const override { return version_; }
  std::string Directory() const override { return "C:\\Plug-in"; }
  std::string ExecutableName() const override { return "QM5RFcPirConfigure"; }
  std::string TimeOfDay() const override { return time_of_day; }
  std::string Time() const override { return "2026-11-23T10:15:00Z"; }
  std::string User() const override { return "user@computer"; }

 private:
  Version version_;
};

/// A file system in memory with Windows paths. The case of ASCII letters does not matter. A folder lists its
/// entries in the order of their creation.
class MemoryFiles : public platform::Files {
 public:
  void MakeFolder(const std::string& path) { Make(path); }

  /// Gives a folder a second path.
  void Link(const std::string& path, const std::string& folder) {
    const std::size_t name = path.find_last_of('\\') + 1;
    Enter(Make(path.substr(0, name)), path.substr(name), Make(folder));
  }

  /// From now on the file cannot be read or written, or the folder listed; paths through it still work.
  void Lock(const std::string& path) { Make(path).locked = true; }

  std::optional<Folder> ReadFolder(const std::string& path) const override {
    const Node* node = Asked(path);
    if (path.empty() || !node || !node->is_folder || node->locked) return std::nullopt;
    Folder folder{std::to_string(reinterpret_cast<std::uintptr_t>(node)), {}};
    for (const std::string& name : node->names)
      folder.entries.push_back({name, node->entries.find(text::ToUpper(name))->second->is_folder});
    return folder;
  }

  std::string ReadStart(const std::string& path, std::size_t bytes) const override {
    const Node* node = Asked(path);
    return !node || node->is_folder || node->locked ? "" : node->content.substr(0, bytes);
  }

  bool FileExists(const std::string& path) const override {
    const Node* node = Asked(path);
    return node && !node->is_folder;
  }

  void Write(const std::string& path, std::string_view content) override {
    Node& file = Make(path);
    if (file.locked) throw platform::Error(5, "Windows", path + ": Access denied.");
    file.is_folder = false;
    file.content = content;
  }

  void WriteNew(const std::string& path, std::string_view content) override {
    if (Find(path)) throw platform::Error(58, "Windows", path + ": File already exists.");
    Write(path, content);
  }

  std::unique_ptr<Growing> CreateGrowing(const std::string& path) override {
    struct File : Growing {
      File(MemoryFiles& owner, std::string name) : files(owner), path(std::move(name)) {}
      void Append(std::string_view text) override {
        if (files.fails_to_append && files.fails_to_append())
          throw platform::Error(112, "Windows", path + ": There is not enough space on the disk.");
        files.Write(path, files.Make(path).content + std::string(text));
      }
      MemoryFiles& files;
      const std::string path;
    };
    WriteNew(path, "");
    return std::make_unique<File>(*this, path);
  }
  /// Called before each append; true makes it fail.
  std::function<bool()> fails_to_append;

  /// Called before each read; true makes it find nothing.
  std::function<bool()> fails;

 private:
  struct Node {
    bool is_folder = true;
    bool locked = false;
    std::string content;
    std::vector<std::string> names;
    std::map<std::string, Node*, std::less<>> entries;  // by name in capitals
  };
  const Node* Asked(std::string_view path) const { return fails && fails() ? nullptr : Find(path); }

  /// Null if there is none.
  const Node* Find(std::string_view path) const {
    const Node* node = &nodes_.front();
    Walk(path, [&](std::string_view name) {
      const auto found = node->entries.find(text::ToUpper(name));
      node = found == node->entries.end() ? nullptr : found->second;
      return node != nullptr;
    });
    return node;
  }

  Node& Make(std::string_view path) {
    Node* node = &nodes_.front();
    Walk(path, [&](std::string_view name) {
      const auto found = node->entries.find(text::ToUpper(name));
      if (found == node->entries.end()) Enter(*node, name, nodes_.emplace_back());
      node = node->entries.find(text::ToUpper(name))->second;
      return true;
    });
    return *node;
  }

  static void Enter(Node& folder, std::string_view name, Node& entry) {
    folder.names.emplace_back(name);
    folder.entries[text::ToUpper(name)] = &entry;
  }

  /// Calls `step` for each name of the path, first to last, until it returns false.
  template <class Step>
  static void Walk(std::string_view path, Step step) {
    while (!path.empty()) {
      const std::size_t end = path.find('\\');
      const std::string_view name = path.substr(0, end);
      if (!name.empty() && !step(name)) return;
      path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
    }
  }

  // Links make the tree a graph, so no node owns another. The first node contains the drives.
  std::list<Node> nodes_ = std::list<Node>(1);
};

/// Scripted other programs: starts are recorded, and the hooks act for the started program, which opens and
/// closes windows and ends.
class ScriptedShell : public platform::Shell {
 public:
  struct Launch {
    std::string program;
    std::string arguments;
    Show show;
  };
  std::vector<Launch> launches;  // including refused ones
  std::vector<Launch> elevated;
  /// The user refuses administrator rights.
  bool declines = false;
  bool refuses = false;
  /// Called before each start; true refuses it.
  std::function<bool()> fails;
  /// The started programs are still running.
  bool running = false;
  /// The started programs ended with exit code 0.
  bool succeeded = true;
  std::set<std::string> windows;    // by title
  std::vector<std::string> closed;  // titles of windows closed by message
  int pauses = 0;
  std::function<void()> on_start;
  std::function<void()> on_pause;

  std::unique_ptr<platform::StartedProgram> Start(const std::string& program, const std::string& arguments,
                                                  Show show) override {
    struct Started : platform::StartedProgram {
      explicit Started(const ScriptedShell& shell) : on(shell) {}
      bool Running() const override { return on.running; }
      bool Succeeded() const override { return !on.running && on.succeeded; }
      const ScriptedShell& on;
    };
    launches.push_back({program, arguments, show});
    if (refuses || (fails && fails())) throw platform::Error(53, "Headless", "File not found");
    running = true;
    if (on_start) on_start();
    return std::make_unique<Started>(*this);
  }
  bool StartElevated(const std::string& program, const std::string& arguments) override {
    elevated.push_back({program, arguments, {}});
    return !declines;
  }
  bool WindowExists(const std::string& title) const override { return windows.contains(title); }
  void CloseWindow(const std::string& title) override {
    if (windows.erase(title) != 0) closed.push_back(title);
  }
  void Pause(std::int32_t) override {
    ++pauses;
    if (on_pause) on_pause();
  }
};

}  // namespace headless
