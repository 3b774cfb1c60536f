#include "ui/controls.h"

#include <algorithm>

namespace ui {

std::string ListView::ShownText(std::size_t row, std::size_t column) const {
  const std::vector<std::string>& cells = rows_.at(row).cells;
  std::string text = column < cells.size() ? cells[column] : std::string();
  std::ranges::replace_if(
      text, [](char character) { return character == '\t' || character == '\r' || character == '\n'; }, ' ');
  return text;
}

void ListView::UserCopies(std::span<const std::size_t> rows) const {
  std::string text;
  for (const std::size_t row : rows)
    for (std::size_t column = 0; column < headers_.size(); ++column)
      text += ShownText(row, column) + (column + 1 < headers_.size() ? "\t" : "\r\n");
  if (on_copy && !text.empty()) on_copy(text);
}

}  // namespace ui
