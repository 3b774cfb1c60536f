#include "xif/search.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "text/strings.h"
#include "xif/program_id.h"

namespace xif {

std::string FindXifFile(const platform::Files& files, const std::string& folder, std::string& program_id) {
  program_id = text::ToUpper(program_id);
  if (program_id.empty()) return {};
  std::vector<std::string> ahead{folder};  // the next one at the end
  std::set<std::string> searched;          // a folder that links lead to again holds nothing new
  while (!ahead.empty()) {
    const std::string path = std::move(ahead.back());
    ahead.pop_back();
    const auto read = files.ReadFolder(path);
    if (!read || !searched.insert(read->identity).second) continue;
    const auto others = static_cast<std::ptrdiff_t>(ahead.size());
    for (const auto& [name, is_folder] : read->entries) {
      if (is_folder && !name.starts_with('.')) ahead.push_back(path + name + '\\');
      if (!is_folder && ReadXifProgramId(files, path + name) == program_id) return path + name;
    }
    std::reverse(ahead.begin() + others, ahead.end());
  }
  return {};
}

}  // namespace xif
