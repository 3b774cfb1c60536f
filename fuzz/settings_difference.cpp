// Differences of settings: a device has what it holds and what is stored for it, and what is not known is
// never equal.

#include <algorithm>

#include "fuzz.h"
#include "settings/comparison.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider given(data, size);
  settings::DeviceSettings standard, same, stored;
  std::size_t known = 0;
  const int units = given.ConsumeBool();
  for (const settings::Field& field : settings::Fields()) {
    if (!given.ConsumeBool()) continue;
    const std::string text = given.ConsumeRandomLengthString(12);
    standard.TextOf(field) = same.TextOf(field) = text;
    if (!ProblemOf(field, text)) stored.TextOf(field) = StoredForm(field, text, units);
    known += !field.is_calibration;
  }
  const settings::Comparison with_itself = Compare(standard, same, {});
  EXPECT_THAT(with_itself.compared == known && with_itself.differences.empty());
  for (const auto& difference : Compare(standard, stored, {}).differences) EXPECT_THAT(!difference.held);
  EXPECT_THAT(Compare(standard, {}, {}).differences.size() == known);
  settings::Majority majority({});
  for (const auto* device : {&standard, &same, &stored}) majority.Add(*device);
  EXPECT_THAT(majority.Splits().empty());
  return 0;
}
