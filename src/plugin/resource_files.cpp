#include "plugin/resource_files.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "startup/identity.h"
#include "text/strings.h"

namespace plugin {
namespace {

std::filesystem::path PathOf(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

bool HoldsFileWithExtension(const std::string& folder, std::string_view extension) {
  std::error_code failed;
  std::filesystem::directory_iterator at(PathOf(folder), failed);
  for (; !failed && at != std::filesystem::directory_iterator(); at.increment(failed)) {
    const std::u8string found = at->path().extension().u8string();
    if (text::EqualIgnoringCase(std::string(found.begin(), found.end()), extension)) return true;
  }
  return false;
}

}  // namespace

ResourceFiles::ResourceFiles(const registry::CRegistry& registry, const platform::Program& program)
    : program_id_prefix_(program.StringResource(startup::kResourceFilePrefixText)) {
  std::string lonworks = registry.MachineSetting("SOFTWARE\\LonWorks", "LonWorks Path");
  if (lonworks.empty()) return;
  if (lonworks.back() != '\\') lonworks += '\\';
  folder_ = lonworks + program.StringResource(startup::kResourceFileFolderText);
}

bool ResourceFiles::Present() const {
  return !folder_.empty() && HoldsFileWithExtension(folder_, ".typ") &&
         HoldsFileWithExtension(folder_, ".fmt");
}

std::int32_t ResourceFiles::Scope() const {
  // Digits of a program ID: format, 5 of the maker, 4 of the class, 2 of the usage, 2 of the channel, 2 of
  // the model.
  switch (program_id_prefix_.size()) {
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

void SetLonMarkObjectModes(const lns::Interface& interface, const ResourceFiles& files) {
  const auto objects = interface.LonMarkObjects();
  const std::int32_t count = objects.Count();
  for (std::int32_t ordinal = 1; ordinal <= count; ++ordinal) {
    const lns::LonMarkObject object = objects.Item(ordinal);
    if (object.Mode() != files.Scope()) object.SetMode(files.Scope());
  }
}

}  // namespace plugin
