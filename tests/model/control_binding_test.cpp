#include "model/control_binding.h"

#include <gtest/gtest.h>

#include "fake_variable.h"
#include "text/numbers.h"

namespace {

std::int32_t NumberOf(const std::function<void()>& step) {
  try {
    step();
  } catch (const platform::Error& error) {
    return error.number();
  }
  return 0;
}

TEST(ControlBinding, ShowsTheFieldRoundedToItsStep) {
  struct Case {
    double step;
    const char* field;
    const char* shown;
  };
  const Case cases[] = {
      {0.5, "21.25", "21"}, {0.5, "21.75", "22"}, {0.5, "-0.25", "0"},  {0.5, "37.49", "37.5"}, {1, "22.5", "22"},
      {1, "23.5", "24"},    {0.5, "", "0"},       {0.5, "invalid", "0"}, {0.5, "21 C", "0"},     {0, "21.25", "21.25"},
      {0, "PERMANENT", "PERMANENT"},
  };
  FakePoint fake;
  model::CNvCtrlTable binding;
  binding.NvCpTable = &fake.point;
  for (const Case& c : cases) {
    fake.point.NvAsArray = {c.field};
    binding.RoundValue = c.step != 0;
    binding.Ceiling = c.step;
    EXPECT_EQ(binding.Value(), c.shown) << c.field << " in steps of " << c.step;
  }
}

TEST(ControlBinding, BindingsOfOnePointSeeEachOther) {
  FakePoint fake;
  fake.point.GetNetworkValue(0);
  model::CNvCtrlTable heat, cool;
  heat.NvCpTable = cool.NvCpTable = &fake.point;
  heat.ItemArrayIndex = 3;
  heat.SetValue("21.5");
  EXPECT_EQ(cool.Value(), "23");
  EXPECT_EQ(cool.NvString(), "23,25,28,21.5,19,16");
  EXPECT_TRUE(fake.point.ValueAsChanges);
  cool.Initialize();
  EXPECT_FALSE(fake.point.ValueAsChanges);
}

TEST(ControlBinding, RefusesWhatWouldCorruptThePoint) {
  FakePoint fake;
  fake.point.GetNetworkValue(0);
  model::CNvCtrlTable binding;
  binding.NvCpTable = &fake.point;
  EXPECT_EQ(NumberOf([&] { binding.SetValue("21,5"); }), 13) << "a separator would shift every later setpoint";
  for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{6}}) {
    binding.ItemArrayIndex = index;
    EXPECT_EQ(NumberOf([&] { binding.Value(); }), 9);
    EXPECT_EQ(NumberOf([&] { binding.SetValue("21"); }), 9);
  }
  EXPECT_EQ(fake.point.NvAsString(), "23,25,28,21,19,16");
  EXPECT_FALSE(fake.point.ValueAsChanges);
}

TEST(ControlBinding, LimitsAreTextsOfTwoUnitSystems) {
  model::CNvCtrlTable binding;
  for (const int units : {0, 1}) {
    EXPECT_EQ(binding.MinLimit(units), "0");
    EXPECT_EQ(binding.MaxLimit(units), "0");
  }
  binding.SetMaxLimit(0, "37.5");
  binding.SetMinLimit(1, "-5");
  EXPECT_EQ(binding.MaxLimit(0), "37.5");
  EXPECT_EQ(binding.MinLimit(1), "-5");
  EXPECT_EQ(binding.MaxLimit(1), "0");
  for (const int units : {-1, 2}) EXPECT_EQ(NumberOf([&] { binding.MaxLimit(units); }), 9);
  EXPECT_EQ(NumberOf([&] { binding.SetMinLimit(0, "cold"); }), 13);
}

TEST(ControlBinding, ACommaLocaleShiftsNoField) {
  text::SetDecimalSeparator(',');
  FakePoint fake;
  fake.variable->value = "23.5,25,28,21,19,16";
  fake.point.GetNetworkValue(0);
  model::CNvCtrlTable binding;
  binding.NvCpTable = &fake.point;
  binding.RoundValue = true;
  binding.Ceiling = 0.5;
  binding.SetValue(binding.Value());
  text::SetDecimalSeparator('.');
  EXPECT_EQ(fake.point.NvAsString(), "23.5,25,28,21,19,16");
}

}  // namespace
