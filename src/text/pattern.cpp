#include "text/pattern.h"

#include <algorithm>

namespace text {

Pattern::Pattern(std::string_view text, Backslash backslash) : pieces_(1) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '*') {
      pieces_.emplace_back();
    } else {
      const bool escapes = backslash == Backslash::Escapes && text.substr(i).starts_with("\\*");
      if (escapes) ++i;
      pieces_.back() += text[i];
    }
  }
}

bool Pattern::Matches(std::string_view text) const {
  const std::string& first = pieces_.front();
  if (!HasWildcard()) return text == first;
  const std::string& last = pieces_.back();
  if (!text.starts_with(first) || text.size() < first.size() + last.size() || !text.ends_with(last))
    return false;
  text = text.substr(first.size(), text.size() - first.size() - last.size());
  for (std::size_t i = 1; i + 1 < pieces_.size(); ++i) {
    const std::size_t at = text.find(pieces_[i]);
    if (at == std::string_view::npos) return false;
    text.remove_prefix(at + pieces_[i].size());
  }
  return true;
}

bool Pattern::MayBegin(std::string_view beginning) const {
  const std::string& first = pieces_.front();
  if (first.starts_with(beginning)) return true;
  return HasWildcard() && beginning.starts_with(first);
}

}  // namespace text
