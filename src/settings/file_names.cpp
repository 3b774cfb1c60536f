#include "settings/file_names.h"

#include <algorithm>

#include "settings/file.h"
#include "text/strings.h"

namespace settings {
namespace {

constexpr std::string_view kForbidden = "<>:\"/\\|?*%";

std::string PercentCode(char c) { return '%' + text::HexByte(c); }

bool IsForbidden(char c) {
  return static_cast<unsigned char>(c) < ' ' || c == 0x7F || kForbidden.find(c) != std::string_view::npos;
}

/// "CON", also before an extension.
bool IsDeviceOfWindows(std::string_view name) {
  const std::string stem = text::ToUpper(text::Trim(name.substr(0, name.find('.'))));
  for (const char* each : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"})
    if (stem == each) return true;
  const bool is_port = stem.starts_with("COM") || stem.starts_with("LPT");
  // The digits may be superscript.
  return is_port && (stem.size() == 4
                         ? stem[3] >= '0' && stem[3] <= '9'
                         : stem.ends_with("\u00B9") || stem.ends_with("\u00B2") || stem.ends_with("\u00B3"));
}

template <class MustEscape>
std::string Escaped(std::string_view name, MustEscape must_escape) {
  std::string escaped;
  for (const char c : name) escaped += must_escape(c) ? PercentCode(c) : std::string(1, c);
  // Windows drops these at the end.
  if (escaped.ends_with('.') || escaped.ends_with(' '))
    escaped.replace(escaped.size() - 1, 1, PercentCode(escaped.back()));
  if (IsDeviceOfWindows(escaped)) escaped.replace(0, 1, PercentCode(escaped.front()));
  return escaped;
}

/// Equal for names that a file system may take for the same. Only some know the capitals of other letters
/// than A to Z, so those are all alike here.
std::string Folded(std::string_view name) {
  std::string folded;
  for (const char c : text::ToLower(name))
    if ((c & 0xC0) != 0x80) folded += (c & 0x80) ? '?' : c;
  return folded;
}

}  // namespace

std::string FileNameOf(std::string_view name) { return Escaped(name, IsForbidden); }

std::string FileNames::For(std::string_view path) {
  std::string file;
  std::size_t begin = 0;
  for (std::size_t end; (end = path.find('/', begin)) != std::string_view::npos; begin = end + 1)
    file += Distinct(file, path.substr(begin, end - begin), "") + separator_;
  return file + Distinct(file, path.substr(begin), kFileExtension);
}

std::string FileNames::Distinct(const std::string& above, std::string_view name, std::string_view extension) {
  const std::string plain = FileNameOf(name) + std::string(extension);
  const auto [known, is_new] = names_.emplace(above + Folded(plain), plain);
  const bool is_index = above.empty() && Folded(plain) == kIndex;
  if ((is_new || known->second == plain) && !is_index) return plain;
  const auto must_escape = [](char c) {
    return IsForbidden(c) || text::ToLower({&c, 1}) != text::ToUpper({&c, 1}) || (c & 0x80);
  };
  return (is_index ? PercentCode(name.front()) + FileNameOf(name.substr(1)) : Escaped(name, must_escape)) +
         std::string(extension);
}

}  // namespace settings
