#include "lonworks/resource_files.h"

#include <algorithm>

#include "startup/identity.h"
#include "text/strings.h"

namespace lonworks {
namespace {

bool AnyHasExtension(const std::vector<std::string>& names, std::string_view extension) {
  return std::ranges::any_of(
      names, [&](const std::string& name) { return text::EndsWithIgnoringCase(name, extension); });
}

constexpr const char* kCatalogName = "ldrf.cat";
constexpr Tool kCatalogTool{"LDRFCAT"};
/// Far more than the names of all manufacturers' files need.
constexpr std::size_t kMostBytes = std::size_t{16} << 20;

bool EndsWithItsName(std::string_view path) {
  return text::EqualIgnoringCase(path.substr(path.find_last_of('\\') + 1), kCatalogName);
}

}  // namespace

ResourceFiles::ResourceFiles(const registry::CRegistry& registry, const platform::Program& program)
    : program_id_prefix_(program.StringResource(startup::kResourceFilePrefixText)) {
  const std::string lonworks = registry::LonWorksFolder(registry);
  if (!lonworks.empty()) folder_ = lonworks + '\\' + program.StringResource(startup::kResourceFileFolderText);
}

bool ResourceFiles::Present(const platform::Files& files) const {
  const std::vector<std::string> names = Names(files);
  return AnyHasExtension(names, ".typ") && AnyHasExtension(names, ".fmt");
}

std::vector<std::string> ResourceFiles::Names(const platform::Files& files) const {
  std::vector<std::string> names;
  const auto folder = files.ReadFolder(folder_);
  if (!folder) return names;
  for (const auto& [name, is_folder] : folder->entries)
    for (const char* extension : {".typ", ".fpt", ".fmt"})
      if (!is_folder && text::EndsWithIgnoringCase(name, extension)) names.push_back(name);
  return names;
}

std::int32_t ScopeOf(std::string_view program_id_prefix) {
  // Digits of a program ID: 1 format, 5 manufacturer, 4 class, 2 usage, 2 channel, 2 model.
  switch (program_id_prefix.size()) {
    case 6:
      return 3;
    case 10:
      return 4;
    case 12:
    case 14:
      return 5;
    case 16:
      return 6;
    default:
      return 0;
  }
}

std::string UserTypeOwner(std::string_view program_id_prefix) {
  constexpr std::size_t kProgramIdDigits = 16;
  std::string id(program_id_prefix);
  if (id.size() < kProgramIdDigits) id.resize(kProgramIdDigits, '0');
  return '#' + id + '[' + std::to_string(ScopeOf(program_id_prefix)) + "].";
}

std::string FolderAboveCatalog(std::string_view catalog_path) {
  const std::string types = text::WithoutBackslash(catalog_path);
  return text::FolderOf(EndsWithItsName(types) ? text::FolderOf(types) : types);
}

ResourceCatalog::ResourceCatalog(const std::string& reported, const std::string& lonworks_folder,
                                 const platform::Files& files)
    : files_(files), path_(text::WithoutBackslash(reported)) {
  if (!path_.empty() && !EndsWithItsName(path_)) path_ += std::string("\\") + kCatalogName;
  if (!files_.FileExists(path_)) path_ = lonworks_folder + "\\Types\\" + kCatalogName;
}

bool ResourceCatalog::Lacks(const std::vector<std::string>& file_names) const {
  std::string content = text::ToUpper(files_.ReadStart(path_, kMostBytes));
  if (content.empty() && files_.FileExists(path_)) return false;
  std::erase(content, '\0');  // the second bytes of Latin letters
  return std::ranges::any_of(file_names, [&](const std::string& name) {
    return content.find(text::ToUpper(name)) == std::string::npos;
  });
}

Tools::Outcome ResourceCatalog::Add(const std::string& folder, Tools& tools) const {
  return tools.Run(kCatalogTool, Quoted(path_) + ' ' + Quoted(folder));
}

}  // namespace lonworks
