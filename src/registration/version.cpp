#include "registration/version.h"

#include <algorithm>
#include <limits>
#include <string>

#include "text/numbers.h"
#include "text/strings.h"

namespace registration {
namespace {

std::int16_t Number(const std::string& text) {
  using Limits = std::numeric_limits<std::int16_t>;
  return static_cast<std::int16_t>(
      std::clamp<double>(text::RoundHalfEven(text::LeadingNumber(text)), Limits::min(), Limits::max()));
}

}  // namespace

Version SplitVersion(std::string_view version) {
  const auto [major, rest] = text::SplitAtFirst(version, ".");
  std::string minor = text::SplitAtFirst(rest, " ").head;
  minor = text::SplitAtFirst(minor, ".").head;
  // A lone digit is written with a zero in front of it; its value stays.
  if (minor.size() == 1) minor.insert(0, "0");
  return {Number(major), Number(minor)};
}

}  // namespace registration
