#include "text/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>

namespace {

TEST(Numbers, ReadsNumericTextsAndLeadingNumbers) {
  const std::tuple<const char*, bool, double> cases[] = {
      {"21", true, 21},    {" 21.5 ", true, 21.5}, {"-0.3", true, -0.3},     {"+4", true, 4},
      {".5", true, 0.5},   {"5.", true, 5},        {"", false, 0},           {"-", false, 0},
      {".", false, 0},     {"-.", false, 0},       {"1:30", false, 1},       {"5-", false, 5},
      {"21 C", false, 21}, {"--5", false, 0},      {"- 5", false, 0},        {"1.2.3", false, 1.2},
      {"1e5", false, 1},   {"0x10", false, 0},     {"1,5", false, 1},        {"abc", false, 0},
      {"\t5", false, 0},   {"inf", false, 0},      {"nan", false, 0},        {"21\t", false, 21},
      {"   ", false, 0},   {"21'5", false, 21},    {"21\u066B5", false, 21},
  };
  for (const auto& [text, numeric, leading] : cases) {
    EXPECT_EQ(text::IsNumeric(text), numeric) << '"' << text << '"';
    EXPECT_DOUBLE_EQ(text::LeadingNumber(text), leading) << '"' << text << '"';
  }
}

TEST(Numbers, ShortestTextReadsBackAsTheSameNumber) {
  const std::pair<double, const char*> cases[] = {{21.5, "21.5"},     {-0.0, "0"},        {100000, "100000"},
                                                  {0.1, "0.1"},       {6553.4, "6553.4"}, {-2.5, "-2.5"},
                                                  {1e-7, "0.0000001"}};
  for (const auto& [value, expected] : cases) EXPECT_EQ(text::ShortestText(value), expected);
  for (const double value :
       {0.1 + 0.2, 1.0 / 3, std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min()})
    EXPECT_EQ(text::LeadingNumber(text::ShortestText(value)), value);
}

TEST(Numbers, ValuesBeyondADoubleAreNotZero) {
  const std::string digits(400, '9');
  EXPECT_GT(text::LeadingNumber(digits), 1e300) << "limits can clamp it";
  EXPECT_LT(text::LeadingNumber("-" + digits), -1e300);
  EXPECT_EQ(text::LeadingNumber("0." + std::string(400, '0') + "1"), 0);
}

TEST(Numbers, ComputedTextHasNoBinaryResidue) {
  EXPECT_EQ(text::ComputedText(21.1 + 2.3), "23.4");
  EXPECT_EQ(text::ComputedText(0.2 - 0.5), "-0.3");
  EXPECT_EQ(text::ComputedText(123456789012345678.0), "123456789012346000");
  EXPECT_EQ(text::ComputedText(-1e22 / 3), "-3333333333333330000000");
  EXPECT_EQ(text::ComputedText(0.00012345), "0.00012345");
}

TEST(Numbers, TiesRoundToEven) {
  EXPECT_EQ(text::RoundHalfEven(2.5), 2);
  EXPECT_EQ(text::RoundHalfEven(-3.5), -4);
  EXPECT_EQ(text::LeadingWholeNumber("0.5 x"), 0);
  EXPECT_EQ(text::LeadingWholeNumber("-99999999999"), std::numeric_limits<std::int32_t>::min());
  EXPECT_DOUBLE_EQ(text::RoundToDecimals(0.25, 1), 0.2);
  EXPECT_DOUBLE_EQ(text::RoundToDecimals(0.35, 1), 0.4);
  EXPECT_DOUBLE_EQ(text::RoundToDecimals(-0.25, 1), -0.2);
}

}  // namespace
