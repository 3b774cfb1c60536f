#pragma once

#include <string>
#include <string_view>

/// Text is UTF-8 inside the program and UTF-16 in the system's calls. An invalid sequence becomes the
/// replacement character; neither function fails.
namespace windows {

std::wstring ToWide(std::string_view utf8);
std::string ToUtf8(std::wstring_view wide);

}  // namespace windows
