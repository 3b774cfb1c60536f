#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace simulator {

/// Paths as texts are UTF-8 on every system.
std::string Utf8(const std::filesystem::path& path);
std::filesystem::path FromUtf8(const std::string& path);

/// Nothing where there is no such file or it cannot be read.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& path);

/// The old file stays whole until the new one is; raises a FileError.
void ReplaceFile(const std::filesystem::path& path, const std::string& text);

}  // namespace simulator
