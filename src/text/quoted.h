#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace text {

/// A text on one line: as it is or, if it would not survive so, in quotation marks with its quotation marks,
/// backslashes and control characters escaped: "a\"b\x09".
std::string Quoted(const std::string& text);

/// Always in quotation marks.
std::string InQuotes(const std::string& text);

/// The text of a possibly quoted one; nothing if a quotation mark or a character after a backslash is
/// missing.
std::optional<std::string> Unquoted(std::string_view text);

/// A text without control characters, for a comment.
std::string Visible(const std::string& text);

}  // namespace text
