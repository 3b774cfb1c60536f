#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace headless {

/// A file system in memory, by Windows paths; names are the same in either letter case (of ASCII letters).
/// A folder lists its entries in the order in which they were made.
class MemoryFiles : public platform::Files {
 public:
  void MakeFolder(const std::string& path);
  /// Makes a folder that is another one under a second name.
  void Link(const std::string& path, const std::string& folder);
  /// Nobody may read or write the file or list the folder from now on; what is below can be reached as
  /// before.
  void Lock(const std::string& path);

  std::optional<Folder> ReadFolder(const std::string& path) const override;
  std::string ReadStart(const std::string& path, std::size_t bytes) const override;
  bool FileExists(const std::string& path) const override;
  /// Makes the folders above the file as well.
  void Write(const std::string& path, std::string_view content) override;

  /// Asked before each reading; true makes it find nothing.
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
  /// Null where there is none.
  const Node* Find(std::string_view path) const;
  Node& Make(std::string_view path);
  static void Enter(Node& folder, std::string_view name, Node& entry);

  // Links make the tree a graph, so the nodes stand apart from it; the first one holds the drives.
  std::deque<Node> nodes_ = std::deque<Node>(1);
};

}  // namespace headless
