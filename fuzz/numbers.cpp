// Numbers and versions in texts: the rules agree with each other, and a number's text reads back.

#include <cmath>

#include "fuzz.h"
#include "registration/names.h"
#include "text/numbers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view given = TextOf(data, size);
  const auto number = text::ParseNumber(given);
  EXPECT_THAT(text::IsNumeric(given) == number.has_value());
  if (number && !std::isinf(*number)) {
    EXPECT_THAT(text::LeadingNumber(given) == *number);
    const std::string shortest = text::ShortestText(*number);
    EXPECT_THAT(text::IsNumeric(shortest) && text::ParseNumber(shortest) == *number);
    EXPECT_THAT(text::IsNumeric(text::ComputedText(*number)));
    if (std::abs(*number) < 1e6)
      EXPECT_THAT(std::abs(text::RoundToDecimals(*number, 1) - *number) <= 0.050000001);
  }
  text::LeadingWholeNumber(given);
  const registration::Version version = registration::SplitVersion(given);
  const std::string again = std::to_string(version.major) + "." + std::to_string(version.minor);
  if (version.minor >= 0) EXPECT_THAT(registration::SplitVersion(again) == version);
  return 0;
}
