#include "text/strings.h"

#include <algorithm>
#include <utility>

namespace text {
namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string Mapped(std::string_view text, char (*map)(char)) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), map);
  return result;
}

}  // namespace

std::string ToLower(std::string_view text) { return Mapped(text, Lower); }
std::string ToUpper(std::string_view text) { return Mapped(text, Upper); }

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, Lower, Lower);
}

bool EndsWithIgnoringCase(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && EqualIgnoringCase(text.substr(text.size() - end.size()), end);
}

std::string Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  for (;;) {
    const auto at = text.find(separator);
    pieces.emplace_back(text.substr(0, at));
    if (at == std::string_view::npos) return pieces;
    text.remove_prefix(at + separator.size());
  }
}

std::string Join(const std::vector<std::string>& pieces, std::string_view separator) {
  std::string result;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (i != 0) result += separator;
    result += pieces[i];
  }
  return result;
}

std::string WithoutAccelerator(std::string_view caption) {
  std::string plain;
  for (std::size_t at = 0; at < caption.size(); ++at) {
    if (caption[at] == '&' && ++at == caption.size()) break;
    plain += caption[at];
  }
  return plain;
}

std::size_t CharacterCount(std::string_view text) {
  const auto starts_character = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return static_cast<std::size_t>(std::ranges::count_if(text, starts_character));
}

std::string FolderOf(std::string_view path) {
  const std::size_t end = path.find_last_of('\\');
  return std::string(end == std::string_view::npos ? "" : path.substr(0, end));
}

std::string WithoutBackslash(std::string_view folder) {
  while (folder.ends_with('\\')) folder.remove_suffix(1);
  return std::string(folder);
}

HeadAndRest SplitAtFirst(std::string_view text, std::string_view delimiter) {
  const auto found = ToLower(text).find(ToLower(delimiter));
  if (found == std::string::npos) return {std::string(text), {}};
  return {std::string(text.substr(0, found)), Trim(text.substr(std::min(found + 1, text.size())))};
}

bool IsUtf8(std::string_view text) {
  const auto is_following = [](char c) { return (c & 0xC0) == 0x80; };
  while (!text.empty()) {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = first < 0x80   ? 1
                               : first < 0xC2 ? 0
                               : first < 0xE0 ? 2
                               : first < 0xF0 ? 3
                               : first < 0xF5 ? 4
                                              : 0;
    if (length == 0 || length > text.size()) return false;
    if (!std::ranges::all_of(text.substr(1, length - 1), is_following)) return false;
    const auto second = length > 1 ? static_cast<unsigned char>(text[1]) : 0;
    // Longer forms than needed, the halves of surrogate pairs, and what is above the last character.
    if ((first == 0xE0 && second < 0xA0) || (first == 0xED && second >= 0xA0) ||
        (first == 0xF0 && second < 0x90) || (first == 0xF4 && second >= 0x90))
      return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string HexByte(char byte) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto value = static_cast<unsigned char>(byte);
  return {kDigits[value >> 4], kDigits[value & 15]};
}

std::string Escaped(std::string_view text) {
  using Entity = std::pair<char, const char*>;
  static constexpr Entity kEntities[] = {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}};
  std::string escaped;
  for (const char c : text) {
    const auto* const entity = std::ranges::find(kEntities, c, &Entity::first);
    escaped += entity != std::end(kEntities) ? entity->second : std::string(1, c);
  }
  return escaped;
}

}  // namespace text
