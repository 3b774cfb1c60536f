#include "headless/computer.h"

#include <utility>

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

}  // namespace headless
