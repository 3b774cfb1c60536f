#include "simulator/files.h"

#include <fstream>
#include <sstream>
#include <system_error>

#include "simulator/errors.h"

namespace simulator {

std::string Utf8(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::filesystem::path FromUtf8(const std::string& path) {
  return std::filesystem::path(std::u8string(path.begin(), path.end()));
}

std::optional<std::string> ReadWholeFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  if (file) text << file.rdbuf();
  if (!file || text.fail()) return std::nullopt;
  return text.str();
}

void ReplaceFile(const std::filesystem::path& path, const std::string& text) {
  std::filesystem::path fresh = path;
  fresh += ".new";
  std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
  file << text;
  file.close();
  std::error_code error;
  if (file) std::filesystem::rename(fresh, path, error);
  if (file && !error) return;
  std::error_code ignored;
  std::filesystem::remove(fresh, ignored);
  throw FileError(Utf8(path) + ": cannot be written");
}

}  // namespace simulator
