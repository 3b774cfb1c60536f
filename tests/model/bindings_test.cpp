#include "model/catalogue.h"
#include "support/user.h"

namespace {

struct Bound {
  Bound() {
    point.Separator = ",";
    point.NvAsArray = {"23", "25.5", "28"};
    binding.NvCpTable = &point;
    binding.ItemArrayIndex = 1;
  }
  model::CNvCpTable point;
  model::CNvCtrlTable binding;
};

TEST(Binding, ShowsTheFieldRoundedToItsStep) {
  const std::tuple<double, const char*, const char*> cases[] = {
      {0.5, "21.25", "21"},  {0.5, "21.75", "22"},
      {0.5, "-0.25", "0"},   {0.5, "37.49", "37.5"},
      {1, "22.5", "22"},     {1, "23.5", "24"},
      {0.5, "", "0"},        {0.5, "21 C", "0"},
      {0, "21.25", "21.25"}, {0, "PERMANENT", "PERMANENT"}};
  for (const auto& [step, field, shown] : cases) {
    Bound bound;
    bound.point.NvAsArray[1] = field;
    bound.binding.RoundValue = step != 0;
    bound.binding.Ceiling = step;
    EXPECT_EQ(bound.binding.Value(), shown) << field << " in steps of " << step;
  }
}

TEST(Binding, RefusesWhatWouldCorruptThePoint) {
  Bound bound;
  EXPECT_EQ(ErrorOf([&] { bound.binding.SetValue("21,5"); }).number(), 13)
      << "it would shift every later setpoint";
  EXPECT_EQ(ErrorOf([&] { bound.binding.SetValue(bound.binding.Value()); }).number(), 0);
  bound.binding.Initialize();
  for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{3}}) {
    bound.binding.ItemArrayIndex = index;
    EXPECT_EQ(ErrorOf([&] { bound.binding.Value(); }).number(), 9);
    EXPECT_EQ(ErrorOf([&] { bound.binding.SetValue("21"); }).number(), 9);
  }
  EXPECT_EQ(bound.binding.NvString(), "23,25.5,28");
  EXPECT_FALSE(bound.point.ValueAsChanges);
}

}  // namespace
