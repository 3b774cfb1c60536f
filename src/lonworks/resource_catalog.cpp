#include "lonworks/resource_catalog.h"

#include <algorithm>

#include "text/strings.h"

namespace lonworks {
namespace {

constexpr const char* kCatalogName = "ldrf.cat";
constexpr Tool kCatalogTool{"LDRFCAT"};
/// Far more than the names of all makers' files take.
constexpr std::size_t kMostBytes = std::size_t{16} << 20;

bool EndsWithItsName(std::string_view path) {
  return text::EqualIgnoringCase(path.substr(path.find_last_of('\\') + 1), kCatalogName);
}

}  // namespace

std::string FolderAboveCatalog(std::string_view catalog_path) {
  const std::string types = text::WithoutBackslash(catalog_path);
  return text::FolderOf(EndsWithItsName(types) ? text::FolderOf(types) : types);
}

ResourceCatalog::ResourceCatalog(const std::string& told, const std::string& lonworks_folder,
                                 const platform::Files& files)
    : files_(files), path_(text::WithoutBackslash(told)) {
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
