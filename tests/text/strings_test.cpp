#include "text/strings.h"

#include <gtest/gtest.h>

namespace {

TEST(Strings, SplitsAtTheFirstDelimiter) {
  const char* cases[][4] = {
      {"1.0.9", ".", "1", "0.9"},
      {"no delimiter", ".", "no delimiter", ""},
      {"Room [A] [B]", "[", "Room ", "A] [B]"},
      {"", ".", "", ""},
  };
  for (const auto& [text, delimiter, head, rest] : cases) {
    const auto split = text::SplitAtFirst(text, delimiter);
    EXPECT_EQ(split.head, head) << text;
    EXPECT_EQ(split.rest, rest) << text;
  }
}

TEST(Strings, RemovesAccelerators) {
  EXPECT_EQ(text::WithoutAccelerator("&Heating && Coolin&g&"), "Heating & Cooling");
}

}  // namespace
