#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "model/catalogue.h"
#include "support/world.h"
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

/// A binding on a point that holds three setpoints.
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
  struct Case {
    double step;
    const char *field, *shown;
  };
  const Case cases[] = {{0.5, "21.25", "21"},  {0.5, "21.75", "22"},
                        {0.5, "-0.25", "0"},   {0.5, "37.49", "37.5"},
                        {1, "22.5", "22"},     {1, "23.5", "24"},
                        {0.5, "", "0"},        {0.5, "21 C", "0"},
                        {0, "21.25", "21.25"}, {0, "PERMANENT", "PERMANENT"}};
  for (const Case& c : cases) {
    Bound bound;
    bound.point.NvAsArray[1] = c.field;
    bound.binding.RoundValue = c.step != 0;
    bound.binding.Ceiling = c.step;
    EXPECT_EQ(bound.binding.Value(), c.shown) << c.field << " in steps of " << c.step;
  }
}

TEST(Binding, RefusesWhatWouldCorruptThePoint) {
  Bound bound;
  text::SetDecimalSeparator(',');
  EXPECT_EQ(NumberOf([&] { bound.binding.SetValue("21,5"); }), 13) << "it would shift every later setpoint";
  EXPECT_EQ(NumberOf([&] { bound.binding.SetValue(bound.binding.Value()); }), 0);
  text::SetDecimalSeparator('.');
  bound.binding.Initialize();
  for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{3}}) {
    bound.binding.ItemArrayIndex = index;
    EXPECT_EQ(NumberOf([&] { bound.binding.Value(); }), 9);
    EXPECT_EQ(NumberOf([&] { bound.binding.SetValue("21"); }), 9);
  }
  EXPECT_EQ(bound.binding.NvString(), "23,25.5,28");
  EXPECT_FALSE(bound.point.ValueAsChanges);
}

TEST(Binding, LimitsAreTextsOfTwoUnitSystems) {
  model::CNvCtrlTable binding;
  binding.SetMaxLimit(0, "37.5");
  binding.SetMinLimit(1, "-5");
  EXPECT_EQ(binding.MaxLimit(0) + binding.MinLimit(1) + binding.MaxLimit(1) + binding.MinLimit(0),
            "37.5-500");
  for (const int units : {-1, 2}) EXPECT_EQ(NumberOf([&] { binding.MaxLimit(units); }), 9);
  EXPECT_EQ(NumberOf([&] { binding.SetMinLimit(0, "cold"); }), 13);
}

TEST(Catalogue, EveryRowHasItsOwnControlAndOnlyEditableFieldsHaveLimits) {
  ASSERT_EQ(model::Catalogue().size(), 45u);
  std::set<std::pair<int, int>> controls;
  for (const model::CatalogueRow& row : model::Catalogue()) {
    const bool shown = row.control.array != model::ScreenArray::None;
    EXPECT_TRUE(!shown || controls.insert({static_cast<int>(row.control.array), row.control.index}).second)
        << row.name;
    const bool editable =
        row.control.array == model::ScreenArray::txtNvi && !model::IsReadOnlyField(row.control.index);
    EXPECT_EQ(row.limits.has_value(), editable) << row.name;
    EXPECT_TRUE(!editable ||
                (row.limits->si_min < row.limits->si_max && row.limits->us_min < row.limits->us_max))
        << row.name;
  }
}

TEST(Screen, EveryListHoldsWhatTheDeviceReports) {
  World world;
  const auto api = world.Configure(kFirstThermostat);
  for (int i = 0; i < model::kChoiceListCount; ++i) {
    const ui::ChoiceList& list = *world.main.screen.cbNvi(i);
    EXPECT_EQ(std::count(list.Items().begin(), list.Items().end(), list.Text()), 1)
        << i << ' ' << list.Text();
  }
}

}  // namespace
