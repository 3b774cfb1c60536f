#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Text helpers of the whole program. Texts are UTF-8; letter case is folded for ASCII letters only.
namespace text {

std::string ToLower(std::string_view text);
std::string ToUpper(std::string_view text);
bool EqualIgnoringCase(std::string_view a, std::string_view b);
bool EndsWithIgnoringCase(std::string_view text, std::string_view end);

/// Without leading and trailing blanks (spaces only).
std::string Trim(std::string_view text);

/// The parts between the separators: one for a text without separators, none for an empty text.
std::vector<std::string> Split(std::string_view text, std::string_view separator);
std::string Join(const std::vector<std::string>& pieces, std::string_view separator);

/// A caption without the "&" of its accelerator; "&&" is a plain "&".
std::string WithoutAccelerator(std::string_view caption);

/// The number of characters (code points) in the text.
std::size_t CharacterCount(std::string_view text);

/// The folder of a Windows path, empty if it has none; a folder without trailing backslashes.
std::string FolderOf(std::string_view path);
std::string WithoutBackslash(std::string_view folder);

struct HeadAndRest {
  std::string head;
  std::string rest;
};

/// Splits at the first delimiter in any letter case. The rest begins after the delimiter's first character
/// and is trimmed. Without a delimiter the head is the whole text.
HeadAndRest SplitAtFirst(std::string_view text, std::string_view delimiter);

/// Well-formed UTF-8.
bool IsUtf8(std::string_view text);

/// Two hexadecimal digits.
std::string HexByte(char byte);

/// For HTML, in text and in attributes.
std::string Escaped(std::string_view text);

}  // namespace text
