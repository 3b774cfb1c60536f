#include "editing/open_device.h"

#include "model/catalogue.h"
#include "support/user.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace {

TEST(Apply, ClampsEveryFieldToItsLimitsAndSaysSo) {
  for (const bool us : {false, true}) {
    Opened opened(kFirstThermostat, us ? "1" : "0");
    const auto apply = [&](const model::CatalogueRow& row, const std::string& typed) {
      opened.desktop.messages.clear();
      opened.simulation->journal().Clear();
      opened.Field(row.control.index).UserChangesText(typed);
      opened.main.cmdApply.UserClicks();
      EXPECT_PRED2(Both, !opened.IsMarked(opened.Field(row.control.index)), !opened.main.cmdApply.Enabled());
      const auto writes = opened.Writes();
      EXPECT_EQ(writes.size(), 1u) << "only the variable that changed is written";
      const auto values =
          text::Split(writes.at(0).substr(writes.at(0).find('=') + 1), row.point == "nciSetPts" ? "," : " ");
      return values.at(static_cast<std::size_t>(row.index));
    };
    for (const model::CatalogueRow& row : model::Catalogue()) {
      if (!row.limits) continue;
      const double low = us ? row.limits->us_min : row.limits->si_min;
      const double high = us ? row.limits->us_max : row.limits->si_max, middle = (low + high) / 2;
      const double inside = !row.offset_value ? 0 : us ? 0.025 : 0.05;
      struct Probe {
        double typed, shown, stored;
        const char* limit_name;
      };
      for (const Probe& probe : {Probe{high + 1, high, high - inside, "maximum"},
                                 {high, high, high - inside, ""},
                                 {middle, middle, middle, ""},
                                 {low, low, low + inside, ""},
                                 {low - 1, low, low + inside, "minimum"}}) {
        SCOPED_TRACE(testing::Message() << row.name << ' ' << probe.typed);
        const std::string shown = text::ShortestText(probe.shown);
        EXPECT_NEAR(text::LeadingNumber(apply(row, text::ShortestText(probe.typed))), probe.stored, 1e-9);
        EXPECT_EQ(opened.Field(row.control.index).Text(), shown);
        ASSERT_EQ(opened.desktop.messages.size(), *probe.limit_name ? 1u : 0u);
        if (!*probe.limit_name) continue;
        const ui::Message& message = opened.desktop.messages[0].message;
        EXPECT_EQ(message.text, std::string(row.description) + " out of range\r\n\r\nThe " +
                                    probe.limit_name + " allowed value is: " + shown +
                                    "\r\n\r\nThe value has been adjusted");
        EXPECT_EQ(message.caption, "QM5R-FC PIR LNS Device Plug-in");
        EXPECT_EQ(message.icon, ui::Icon::None);
      }
    }
    EXPECT_EQ(apply(model::Catalogue()[6], us ? "90.0" : "32.0"), us ? "90.0" : "32.0") << "another text";
  }
}

TEST(Apply, WritesOnlyTheChangedVariablesOnceEach) {
  Opened opened;
  opened.Enter(0, "20.5");
  opened.Enter(1, "15");
  opened.Choose(0, "TEMPORARY");
  opened.Enter(39, "90");
  opened.Apply();
  const auto writes = opened.Writes();
  ASSERT_EQ(writes.size(), 3u);
  EXPECT_EQ(writes[0], "nciSetPts Value=23,25,28,20.5,19,15");
  EXPECT_TRUE(writes[1].starts_with("nciGenOpts Value=")) << writes[1];
  EXPECT_EQ(writes[2], "nciSndHrtBt Value=90");
  EXPECT_EQ(opened.Raw("nciSetPts"), "08FC09C40AF00802076C05DC");
  EXPECT_TRUE(opened.desktop.messages.empty());
}

TEST(Apply, KeepsAnEditMadeWhileItRuns) {
  Opened opened;
  opened.Enter(39, "90");
  opened.Enter(0, "20.5");
  opened.desktop.on_yield = [&] {
    opened.Field(39).UserChangesText("95");
    opened.Field(40).UserChangesText("7");
  };
  opened.Apply();
  opened.desktop.on_yield = nullptr;
  EXPECT_FALSE(opened.IsMarked(opened.Field(0)));
  EXPECT_PRED2(Both, opened.IsMarked(opened.Field(39)), opened.IsMarked(opened.Field(40)));
  EXPECT_TRUE(opened.main.cmdApply.Enabled());
  opened.Apply();
  EXPECT_EQ(opened.Writes().back(), "nciMinOutTm Value=7");
}

TEST(Apply, OpeningEveryListAndApplyingChangesNoByte) {
  for (const char* units : {"0", "1"}) {
    Opened opened(kFirstThermostat, units);
    const std::string options = opened.Raw("nciGenOpts"), humidity = opened.Raw("nciRHmodel");
    for (int i = 0; i < model::kChoiceListCount; ++i) opened.List(i).on_drop_down();
    opened.Apply();
    EXPECT_EQ(opened.Writes().size(), 2u);
    EXPECT_EQ(opened.Raw("nciGenOpts"), options);
    EXPECT_EQ(opened.Raw("nciRHmodel"), humidity);
  }
}

TEST(Apply, SkipsTextsThatAreNotNumbers) {
  for (const char* text : {"", "-", "abc"}) {
    Opened opened;
    opened.Enter(39, "90");
    opened.Field(0).UserChangesText(text);  // as another program sets it
    opened.Field(1).UserChangesText("15");
    opened.main.cmdApply.UserClicks();
    EXPECT_EQ(opened.Message().text, "Value must be numerical");
    EXPECT_EQ(opened.Writes(),
              (std::vector<std::string>{"nciSetPts Value=23,25,28,21,19,15", "nciSndHrtBt Value=90"}));
    EXPECT_PRED2(Both, opened.IsMarked(opened.Field(0)), opened.main.cmdApply.Enabled());
    EXPECT_PRED2(Both, !opened.IsMarked(opened.Field(1)), !opened.IsMarked(opened.Field(39)));
    opened.main.cmdCancel.UserClicks();
    EXPECT_EQ(opened.Field(0).Text(), "21");
  }
}

TEST(PutBack, DropsTheChangeOfOneFieldAndKeepsTheOthersOfItsPoint) {
  Opened opened;
  const auto has_change = [&](int index) {
    return opened.Field(index).ToolTip().find("changed") != std::string::npos;
  };
  const std::string bytes = opened.Raw("nciSetPts");
  opened.Enter(0, "20.5");
  opened.Enter(1, "15");
  opened.simulation->faults().Add({"", "", "write", 1, 18034});
  opened.simulation->faults().Add({"", "", "write", 2, 18034});
  opened.Apply();  // fails, and leaves both texts in the point
  EXPECT_TRUE(opened.Field(1).ToolTip().ends_with("\r\nchanged, was 16"));
  opened.PutBack(opened.Field(0));
  EXPECT_EQ(opened.Field(0).Text() + " " + opened.Field(1).Text(), "21 15");
  EXPECT_PRED2(Both, !opened.IsMarked(opened.Field(0)), !has_change(0));
  EXPECT_PRED2(Both, opened.IsMarked(opened.Field(1)), has_change(1));
  EXPECT_TRUE(opened.main.cmdApply.Enabled());
  opened.Type(0, "1:30");
  opened.GoTo(opened.List(0));
  EXPECT_EQ(opened.Field(0).Text(), "21") << "a refused entry does not bring the edit back";
  opened.Apply();
  EXPECT_EQ(opened.Writes().back(), "nciSetPts Value=23,25,28,21,19,15 !");
  opened.PutBack(opened.Field(1));
  EXPECT_PRED2(Both, !opened.main.cmdApply.Enabled(), !opened.main.cmdCancel.Enabled());
  opened.Key(opened.List(0), 13);
  EXPECT_EQ(opened.Writes().size(), 2u) << "nothing is left to write";
  EXPECT_EQ(opened.Raw("nciSetPts"), bytes);
}

TEST(PutBack, ShowsTheDevicesValueAndAnnouncesItInTheTooltip) {
  struct Case {
    const char *units, *edit, *was;
    int list, page;
  };
  for (const Case& c :
       {Case{"0", "22", "21", -1, 0}, {"1", "71", "70", -1, 0}, {"1", "WINDOW", "NONE", 2, 2}}) {
    Opened opened(kFirstThermostat, c.units);
    constexpr int kMenuKey = 93;
    ui::Field* const shown = c.list < 0 ? static_cast<ui::Field*>(&opened.Field(0)) : &opened.List(c.list);
    ui::Field& field = *shown;
    const std::string tip = field.ToolTip();
    opened.Key(field, kMenuKey);
    EXPECT_PRED2(Both, !opened.IsMarked(field), !field.CanBePutBack());
    c.list < 0 ? opened.Type(0, c.edit) : opened.Choose(c.list, c.edit);
    EXPECT_EQ(field.ToolTip(), tip + "\r\nchanged, was " + c.was);
    EXPECT_EQ(opened.main.screen.tabData.Marked(), std::set{static_cast<std::size_t>(c.page)});
    opened.PutBack(field);
    EXPECT_EQ(field.Text(), c.was);
    EXPECT_EQ(field.ToolTip(), tip);
    EXPECT_PRED2(Both, opened.main.screen.tabData.Marked().empty(), !opened.main.cmdApply.Enabled());
  }
}

TEST(PutBack, IsDisabledDuringAnOperationAndWithoutANetwork) {
  Opened opened;
  opened.Enter(39, "90");
  opened.desktop.on_yield = [&] { opened.Field(39).UserPutsBack(); };
  opened.Apply();
  EXPECT_EQ(opened.Writes(), std::vector<std::string>{"nciSndHrtBt Value=90"});
  opened.desktop.on_yield = nullptr;
  opened.Enter(39, "80");
  World::Put(*opened.api, "networkName", std::string("Demo Annex"));
  opened.PutBack(opened.Field(39));
  EXPECT_EQ(opened.Field(39).Text(), "80") << "the edit stays on the screen";
}

TEST(Events, UpdateFieldsLogAndWindow) {
  Opened opened;
  const auto raise = [&](std::int32_t event, std::int32_t tag, const char* value) {
    const platform::Value arguments[] = {tag, std::string(value), platform::LateBoundPtr()};
    opened.simulation->RaiseEvent(event, platform::Arguments(arguments, event == 9    ? 0
                                                                        : event == 20 ? 1
                                                                                      : 3));
    opened.desktop.Yield();
  };
  raise(13, 1, "19.5");
  EXPECT_EQ(opened.Field(0).Text(), "19.5");
  EXPECT_FALSE(opened.IsMarked(opened.Field(0)));
  raise(13, 9, "TEMPORARY");
  EXPECT_EQ(opened.List(0).Text(), "PERMANENT") << "lists do not change";
  const std::size_t rows = opened.log.lstActivity.Rows().size();
  for (const std::int32_t tag : {0, -1, 46}) {
    raise(13, tag, "1");
    raise(20, tag, "");
  }
  EXPECT_EQ(opened.log.lstActivity.Rows().size(), rows);
  raise(20, 45, "");
  EXPECT_EQ(opened.log.lstActivity.Rows().size(), rows + 1);
  EXPECT_EQ(opened.log.lstActivity.Rows().back().cells[1], "");
  raise(9, 0, "");
  EXPECT_EQ(opened.desktop.repaints, 1);
}

}  // namespace
