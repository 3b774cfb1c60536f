#include "text/quoted.h"

#include <algorithm>

#include "text/strings.h"

namespace text {
namespace {

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

}  // namespace

std::string Quoted(const std::string& text) {
  if (!text.starts_with('"') && !text.starts_with(' ') && !text.ends_with(' ') &&
      std::ranges::none_of(text, IsControl))
    return text;
  return InQuotes(text);
}

std::string InQuotes(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text)
    quoted += c == '"' || c == '\\' ? std::string{'\\', c}
              : IsControl(c)        ? "\\x" + HexByte(c)
                                    : std::string(1, c);
  return quoted + '"';
}

std::string Visible(const std::string& text) {
  std::string visible;
  for (const char c : text) visible += IsControl(c) ? "\\x" + HexByte(c) : std::string(1, c);
  return visible;
}

std::optional<std::string> Unquoted(std::string_view text) {
  if (!text.starts_with('"')) return std::string(text);
  std::string plain;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] == '"') return i + 1 == text.size() ? std::optional(plain) : std::nullopt;
    if (text[i] != '\\') {
      plain += text[i];
    } else if (i + 1 < text.size() && (text[i + 1] == '"' || text[i + 1] == '\\')) {
      plain += text[++i];
    } else {
      if (i + 3 >= text.size() || text[i + 1] != 'x') return std::nullopt;
      const int high = HexDigit(text[i + 2]), low = HexDigit(text[i + 3]);
      // Other bytes are only parts of characters.
      if (high < 0 || high > 7 || low < 0) return std::nullopt;
      plain += static_cast<char>(high * 16 + low);
      i += 3;
    }
  }
  return std::nullopt;
}

}  // namespace text
