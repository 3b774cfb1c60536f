#include "headless/computer.h"

#include <utility>

#include "text/strings.h"

namespace headless {
namespace {

bool HasSubkeys(const std::map<std::string, MemoryRegistry::Key>& keys, const std::string& path) {
  const auto next = keys.lower_bound(path + "\\");
  return next != keys.end() && next->first.starts_with(path + "\\");
}

class MemoryKey : public platform::RegistryKey {
 public:
  MemoryKey(MemoryRegistry& registry, platform::Registry::Hive hive,
            std::map<std::string, MemoryRegistry::Key>& keys, std::string path)
      : registry_(registry), hive_(hive), keys_(keys), path_(std::move(path)) {}

  std::optional<std::string> ReadText(const std::string& name) const override {
    if (registry_.Fails()) return std::nullopt;
    const auto& texts = keys_.at(path_).texts;
    const auto found = texts.find(name);
    return found == texts.end() ? std::nullopt : std::optional(found->second);
  }
  bool WriteText(const std::string& name, const std::string& text) override {
    if (registry_.RefusesWrites(hive_) || registry_.Fails()) return false;
    keys_.at(path_).texts[name] = text;
    return true;
  }
  std::optional<std::string> Subkey(std::uint32_t index) const override {
    if (registry_.Fails()) return std::nullopt;
    for (const auto& [path, key] : keys_) {
      const bool below =
          path.starts_with(path_ + "\\") && path.find('\\', path_.size() + 1) == std::string::npos;
      if (below && index-- == 0) return path.substr(path_.size() + 1);
    }
    return std::nullopt;
  }
  bool DeleteSubkey(const std::string& name) override { return registry_.Delete(hive_, path_ + "\\" + name); }

 private:
  MemoryRegistry& registry_;
  platform::Registry::Hive hive_;
  std::map<std::string, MemoryRegistry::Key>& keys_;
  std::string path_;
};

/// Calls `step` for each name of the path, first to last, until it returns false.
template <class Step>
void Walk(std::string_view path, Step step) {
  while (!path.empty()) {
    const std::size_t end = path.find('\\');
    const std::string_view name = path.substr(0, end);
    if (!name.empty() && !step(name)) return;
    path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
  }
}

}  // namespace

std::unique_ptr<platform::RegistryKey> MemoryRegistry::Open(Hive hive, const std::string& path,
                                                            Access access) {
  if (Fails() || (access != Access::Read && RefusesWrites(hive))) return nullptr;
  if (path.empty()) Of(hive)[path];
  if (!Of(hive).contains(path)) return nullptr;
  return std::make_unique<MemoryKey>(*this, hive, Of(hive), path);
}

std::unique_ptr<platform::RegistryKey> MemoryRegistry::Create(Hive hive, const std::string& path) {
  if (RefusesWrites(hive) || Fails()) return nullptr;
  for (std::size_t end = path.find('\\');; end = path.find('\\', end + 1)) {
    Of(hive)[path.substr(0, end)];
    if (end == std::string::npos) break;
  }
  return std::make_unique<MemoryKey>(*this, hive, Of(hive), path);
}

bool MemoryRegistry::Delete(Hive hive, const std::string& path) {
  if (Fails() || RefusesWrites(hive) || path == undeletable || HasSubkeys(Of(hive), path)) return false;
  return Of(hive).erase(path) == 1;
}

std::string BuiltInProgram::StringResource(int number) const {
  switch (number) {
#define STRING(resource, text) \
  case resource:               \
    return text;
#include "startup/string_table.inc"
#undef STRING
    default:
      return {};
  }
}

void MemoryFiles::Write(const std::string& path, std::string_view content) {
  Node& file = Make(path);
  if (file.locked) throw platform::Error(5, "Windows", path + ": Access denied.");
  file.is_folder = false;
  file.content = content;
}

void MemoryFiles::MakeFolder(const std::string& path) { Make(path); }

void MemoryFiles::Link(const std::string& path, const std::string& folder) {
  const std::size_t name = path.find_last_of('\\') + 1;
  Enter(Make(path.substr(0, name)), path.substr(name), Make(folder));
}

void MemoryFiles::Lock(const std::string& path) { Make(path).locked = true; }

std::optional<platform::Files::Folder> MemoryFiles::ReadFolder(const std::string& path) const {
  const Node* node = Asked(path);
  if (path.empty() || !node || !node->is_folder || node->locked) return std::nullopt;
  Folder folder{std::to_string(reinterpret_cast<std::uintptr_t>(node)), {}};
  for (const std::string& name : node->names)
    folder.entries.push_back({name, node->entries.find(text::ToUpper(name))->second->is_folder});
  return folder;
}

std::string MemoryFiles::ReadStart(const std::string& path, std::size_t bytes) const {
  const Node* node = Asked(path);
  return !node || node->is_folder || node->locked ? "" : node->content.substr(0, bytes);
}

bool MemoryFiles::FileExists(const std::string& path) const {
  const Node* node = Asked(path);
  return node && !node->is_folder;
}

const MemoryFiles::Node* MemoryFiles::Find(std::string_view path) const {
  const Node* node = &nodes_.front();
  Walk(path, [&](std::string_view name) {
    const auto found = node->entries.find(text::ToUpper(name));
    node = found == node->entries.end() ? nullptr : found->second;
    return node != nullptr;
  });
  return node;
}

MemoryFiles::Node& MemoryFiles::Make(std::string_view path) {
  Node* node = &nodes_.front();
  Walk(path, [&](std::string_view name) {
    const auto found = node->entries.find(text::ToUpper(name));
    if (found == node->entries.end()) Enter(*node, name, nodes_.emplace_back());
    node = node->entries.find(text::ToUpper(name))->second;
    return true;
  });
  return *node;
}

void MemoryFiles::Enter(Node& folder, std::string_view name, Node& entry) {
  folder.names.emplace_back(name);
  folder.entries[text::ToUpper(name)] = &entry;
}

}  // namespace headless
