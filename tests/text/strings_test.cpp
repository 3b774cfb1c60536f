#include "text/strings.h"

#include <gtest/gtest.h>

namespace {

TEST(Strings, SplitAndJoinAreInverse) {
  EXPECT_TRUE(text::Split("", ",").empty());
  EXPECT_EQ(text::Split("7", ","), (std::vector<std::string>{"7"}));
  EXPECT_EQ(text::Split("a,,b,", ","), (std::vector<std::string>{"a", "", "b", ""}));
  EXPECT_EQ(text::Split("one\r\ntwo", "\r\n"), (std::vector<std::string>{"one", "two"}));
  for (const char* whole : {"", "7", "a,,b,", ","})
    EXPECT_EQ(text::Join(text::Split(whole, ","), ","), whole);
}

TEST(Strings, SplitAtFirst) {
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

TEST(Strings, WithoutAccelerator) {
  EXPECT_EQ(text::WithoutAccelerator("&Heating && Coolin&g&"), "Heating & Cooling");
}

TEST(Strings, TrimRemovesOnlyBlanks) {
  EXPECT_EQ(text::Trim("  /regplugin "), "/regplugin");
  EXPECT_EQ(text::Trim("   "), "");
  EXPECT_EQ(text::Trim("\tx"), "\tx");
}

}  // namespace
