#include "text/csv.h"

namespace text {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kFormula = "=+-@\t\r";

bool IsFormula(std::string_view text) {
  return !text.empty() && kFormula.find(text.front()) != std::string_view::npos;
}

/// The text of the cell at the start, which is removed with the separator after it; true at the end of a row.
bool TakeCell(std::string_view& text, std::string& cell) {
  bool quoted = false;
  while (!text.empty()) {
    const char c = text.front();
    text.remove_prefix(1);
    if (c == '"' && quoted && text.starts_with('"')) {
      cell += c;
      text.remove_prefix(1);
    } else if (c == '"') {
      quoted = !quoted;
    } else if (!quoted && c == ',') {
      return false;
    } else if (!quoted && c == '\n') {
      if (cell.ends_with('\r')) cell.pop_back();
      return true;
    } else {
      cell += c;
    }
  }
  return true;
}

}  // namespace

std::string CsvCell(std::string_view text) {
  std::string cell = (IsFormula(text) ? "'" : "") + std::string(text);
  if (cell.find_first_of(",;\"\r\n\t") == std::string::npos) return cell;
  for (std::size_t at = 0; (at = cell.find('"', at)) != std::string::npos; at += 2) cell.insert(at, 1, '"');
  return '"' + cell + '"';
}

std::string CsvLine(const std::vector<std::string>& cells) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) line += (i == 0 ? "" : ",") + CsvCell(cells[i]);
  return line + "\r\n";
}

std::vector<std::vector<std::string>> CsvRows(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  std::vector<std::vector<std::string>> rows(1);
  while (!text.empty()) {
    std::string cell;
    const bool ends = TakeCell(text, cell);
    if (cell.starts_with('\'') && IsFormula(std::string_view(cell).substr(1))) cell.erase(0, 1);
    rows.back().push_back(std::move(cell));
    if (!ends) continue;
    if (rows.back() == std::vector<std::string>{""}) rows.back().clear();
    if (!rows.back().empty()) rows.emplace_back();
  }
  if (rows.back().empty()) rows.pop_back();
  return rows;
}

}  // namespace text
