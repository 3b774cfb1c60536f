#include "help_file/files.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace help_file {

std::vector<File> ReadFolder(const std::filesystem::path& folder) {
  std::vector<File> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    std::ifstream in(entry.path(), std::ios::binary);
    in.exceptions(std::ios::badbit | std::ios::failbit);
    files.push_back({entry.path().filename().string(), {std::istreambuf_iterator<char>(in), {}}});
  }
  std::ranges::sort(files, {}, &File::name);
  return files;
}

void WriteFolder(const std::filesystem::path& folder, const std::vector<File>& files) {
  std::filesystem::create_directories(folder);
  for (const File& file : files) {
    std::ofstream out;
    out.exceptions(std::ios::badbit | std::ios::failbit);
    out.open(folder / file.name, std::ios::binary | std::ios::trunc);
    out << file.content;
    out.close();
  }
}

}  // namespace help_file
