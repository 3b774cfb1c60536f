#include "headless/memory_files.h"

#include <utility>

#include "platform/error.h"
#include "text/strings.h"

namespace headless {
namespace {

/// Calls for each name of the path, first to last, until it returns false.
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
