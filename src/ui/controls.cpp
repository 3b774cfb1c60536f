#include "ui/controls.h"

#include <algorithm>

namespace ui {

std::optional<std::size_t> ImageList::Find(std::string_view key) const {
  const auto found = std::ranges::find(images_, key, &Image::key);
  if (found == images_.end()) return std::nullopt;
  return static_cast<std::size_t>(found - images_.begin());
}

ListView::Cells::Cells(std::initializer_list<std::string> texts) {
  std::size_t length = 0;
  for (const std::string& text : texts) length += text.size() + 1;
  joined_.reserve(length);
  for (const std::string& text : texts) joined_.append(text, 0, text.find('\0')).push_back('\0');
}

std::size_t ListView::Cells::size() const {
  return static_cast<std::size_t>(std::ranges::count(joined_, '\0'));
}

std::string ListView::Cells::operator[](std::size_t column) const {
  std::string_view rest = joined_;
  for (; column > 0 && !rest.empty(); --column) rest.remove_prefix(rest.find('\0') + 1);
  return std::string(rest.substr(0, rest.find('\0')));
}

std::string ListView::ShownText(std::size_t row, std::size_t column) const {
  std::string text = rows_.at(row).cells[column];
  std::ranges::replace_if(
      text, [](char character) { return character == '\t' || character == '\r' || character == '\n'; }, ' ');
  return text;
}

void ListView::UserTicks(std::size_t row, bool tick) {
  std::optional<bool>& held = rows_.at(row).tick;
  if (!held || held == tick) return;
  held = tick;
  if (on_tick) on_tick(row);
}

void ListView::UserSelects(std::optional<std::size_t> row) {
  if (selected_ == row) return;
  selected_ = row;
  if (on_select) on_select();
}

void ListView::UserCopies(std::span<const std::size_t> rows) const {
  std::string text;
  for (const std::size_t row : rows)
    for (std::size_t column = 0; column < headers_.size(); ++column)
      text += ShownText(row, column) + (column + 1 < headers_.size() ? "\t" : "\r\n");
  if (on_copy && !text.empty()) on_copy(text);
}

}  // namespace ui
