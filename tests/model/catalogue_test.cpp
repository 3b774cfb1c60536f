#include "model/catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "support/world.h"

namespace {

/// The lists that a device's network variables and the screen must agree on.
struct Lists {
  Lists() : api(world.Configure(kFirstThermostat)), points(world.main.CurrentDevice().Interface().NetworkVariables()) {}
  World world;
  std::shared_ptr<plugin::LNSPlugInAPI> api;
  model::PointList points;
};

TEST(Catalogue, EveryRowIsBoundToItsControlAndField) {
  Lists lists;
  const model::BindingList bindings = model::MakeBindings(lists.points, lists.world.main.screen);
  ASSERT_EQ(bindings.size(), 45u);
  for (std::size_t i = 0; i < lists.points.size(); ++i) lists.points[i].GetNetworkValue(0);
  for (const auto& binding : bindings) EXPECT_NO_THROW(binding.Value()) << binding.Name;
  EXPECT_EQ(bindings[0].Name, "nciSetPts.occ_heat");
  EXPECT_EQ(bindings[1].Ceiling, 1);
  EXPECT_EQ(bindings[10].MaxLimit(1), "5");
  EXPECT_EQ(bindings[19].MinLimit(0), "-2.5");
  EXPECT_EQ(bindings[44].TheControl, nullptr);
}

TEST(Catalogue, NoTwoFieldsShareAControlOrALimitIsEmpty) {
  std::set<std::pair<int, int>> controls;
  for (const model::CatalogueRow& row : model::Catalogue()) {
    if (row.control.array == model::ScreenArray::None) continue;
    EXPECT_TRUE(controls.insert({static_cast<int>(row.control.array), row.control.index}).second) << row.name;
    if (row.limits) {
      EXPECT_LT(row.limits->si_min, row.limits->si_max) << row.name;
      EXPECT_LT(row.limits->us_min, row.limits->us_max) << row.name;
    }
    EXPECT_EQ(row.limits.has_value(), row.control.array == model::ScreenArray::txtNvi && !model::IsReadOnlyField(row.control.index))
        << row.name;
  }
}

TEST(PointList, KeysAndSecondView) {
  Lists lists;
  ASSERT_EQ(lists.points.size(), 11u);
  const model::CNvCpTable& raw = lists.points.Item("nciSccModelRaw");
  EXPECT_EQ(raw.Name, "nciSccModel (Raw)");
  EXPECT_EQ(raw.MyNetworkVariable, lists.points.Item("nciSccModel").MyNetworkVariable);
  EXPECT_EQ(raw.Separator, "\t");
  EXPECT_THROW(lists.points.Item("nciSccModel (Raw)"), platform::Error);
}

TEST(Screen, EveryListHoldsWhatTheDeviceReports) {
  Lists lists;
  for (int i = 0; i < model::kChoiceListCount; ++i) {
    const ui::ChoiceList* list = lists.world.main.screen.cbNvi(i);
    ASSERT_NE(list, nullptr) << i;
    EXPECT_EQ(std::ranges::count(list->Items(), list->Text()), 1) << i << ' ' << list->Text();
  }
}

}  // namespace
