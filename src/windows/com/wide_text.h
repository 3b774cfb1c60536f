#pragma once

#include <string>
#include <string_view>

/// Text at the edge to Windows: UTF-8 inside the program, UTF-16 in the system's calls. A sequence that is no
/// valid text becomes the replacement character; neither function fails.
namespace windows {

std::wstring ToWide(std::string_view utf8);
std::string ToUtf8(std::wstring_view wide);

}  // namespace windows
