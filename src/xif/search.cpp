#include "xif/search.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "text/strings.h"

namespace xif {
namespace {

/// Far more than the first lines need, yet quick to read from any file with this extension.
constexpr std::size_t kHeadBytes = std::size_t{16} * 1024;

constexpr std::size_t kIdBytes = 8;
/// Two digits per byte, with one separator between bytes.
constexpr std::size_t kIdLength = 3 * kIdBytes - 1;

/// Removes the first line from the text and returns it without its end: CR LF, CR or LF.
std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = rest.find_first_of("\r\n");
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(line.size());
  rest.remove_prefix(rest.starts_with("\r\n") ? 2 : rest.empty() ? 0 : 1);
  return line;
}

/// The fourth line, or the fifth if the fourth is blank.
std::string_view IdLine(std::string_view rest) {
  constexpr int kLinesBefore = 3;
  for (int i = 0; i < kLinesBefore; ++i) TakeLine(rest);
  const std::string_view line = TakeLine(rest);
  return text::Trim(line).empty() ? TakeLine(rest) : line;
}

/// A character of a text program ID; a zero byte is a blank. Nothing if the digits are not hexadecimal.
std::optional<std::string> CharacterOf(std::string_view digits) {
  std::uint8_t code = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
  if (read.ec != std::errc() || read.ptr != digits.data() + digits.size()) return std::nullopt;
  if (code == 0) return " ";
  if (code < 0x80) return std::string(1, static_cast<char>(code));
  return std::string{static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
}

}  // namespace

std::string ReadXifProgramId(const platform::Files& files, const std::string& path) {
  if (!text::EndsWithIgnoringCase(path, ".XIF")) return {};
  const std::string head = files.ReadStart(path, kHeadBytes);
  const std::string_view line = IdLine(head);
  if (line.size() < kIdLength) return {};
  // Program IDs whose first digit is below 8 are texts.
  const bool standard = static_cast<unsigned char>(line.front()) >= '8';
  std::string id;
  for (std::size_t byte = 0; byte < kIdBytes; ++byte) {
    const std::string_view digits = line.substr(3 * byte, 2);
    const auto piece = standard ? std::string(digits) : CharacterOf(digits);
    if (!piece) return {};
    id += *piece;
  }
  return standard ? id : id + std::string(kIdBytes, ' ');
}

std::string FindXifFile(const platform::Files& files, const std::string& folder, std::string& program_id) {
  program_id = text::ToUpper(program_id);
  if (program_id.empty()) return {};
  std::vector<std::string> ahead{folder};  // the next folder is the last
  std::set<std::string> searched;          // links can lead to a folder again
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
