#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace text {

/// One cell of comma-separated values. What a spreadsheet would take for a formula begins with an apostrophe.
std::string CsvCell(std::string_view text);

/// A line of such cells with its end, CR LF.
std::string CsvLine(const std::vector<std::string>& cells);

/// The cells of comma-separated values, row by row, as CsvCell writes them, with or without byte-order mark.
/// A quotation mark without its end takes the rest of the text. Empty lines are left out.
std::vector<std::vector<std::string>> CsvRows(std::string_view text);

}  // namespace text
