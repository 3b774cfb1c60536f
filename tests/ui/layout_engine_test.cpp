#include "ui/layout_engine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <tuple>

#include "model/configuration_screen.h"

namespace {

using ui::Box;
using ui::Control;
using ui::Extent;
using ui::Rectangle;

class FakeMetrics : public ui::Metrics {
 public:
  Extent PreferredSize(const Control& control) const override {
    if (control.kind() == Control::Kind::TextField) return {60, 20};
    if (control.kind() == Control::Kind::ChoiceList)
      return {30 + 15 * static_cast<int>(static_cast<const ui::ChoiceList&>(control).Items().size()), 20};
    if (control.kind() == Control::Kind::Tabs) return {400, 22};
    if (control.kind() == Control::Kind::StatusBar) return {50, 18};
    return {6 * static_cast<int>(control.Text().size()), 12};
  }
  ui::Insets FrameInsets(const Control&, bool nested) const override {
    return nested ? ui::Insets{0, 14, 0, 2} : ui::Insets{8, 16, 8, 8};
  }
  ui::Insets TabInsets(const Control&) const override { return {4, 24, 4, 4}; }
  int Margin() const override { return 10; }
  int ControlGap() const override { return 5; }
  int GroupGap() const override { return 9; }
  double TwipsPerPixel() const override { return 15; }
  Extent Frame() const override { return {8, 30}; }
};

const FakeMetrics kMetrics;
using Places = std::map<const Control*, Rectangle>;

Places Arrange(const Box& layout, Extent client) {
  Places places;
  for (const ui::Placement& placement : ui::LayoutEngine(layout, kMetrics).Arrange(client))
    places[placement.control] = placement.rectangle;
  return places;
}

bool Contains(const Rectangle& outer, const Rectangle& inner) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right() <= outer.right() &&
         inner.bottom() <= outer.bottom();
}

bool Overlap(const Rectangle& one, const Rectangle& other) {
  return one.left < other.right() && other.left < one.right() && one.top < other.bottom() &&
         other.top < one.bottom();
}

/// Checks that siblings in a box do not overlap or leave the box; returns the controls directly in it.
std::vector<const Control*> ExpectTidy(const Box& box, const Places& places, Rectangle around) {
  if (box.control) {
    const Rectangle own = places.at(box.control);
    EXPECT_TRUE(Contains(around, own)) << box.control->name() << " " << box.control->Text();
    const Extent needed = kMetrics.PreferredSize(*box.control);
    EXPECT_GE(own.width, needed.width) << box.control->name();
    EXPECT_GE(own.height, needed.height) << box.control->name();
    around = own;
    if (box.kind == Box::Kind::Frame) around.top += 12;  // the caption
    if (box.kind == Box::Kind::Pages) around.top += 22;
  }
  std::vector<const Control*> inside;
  for (const Box& child : box.children) {
    const auto added = ExpectTidy(child, places, around);
    if (box.kind == Box::Kind::Pages) continue;  // pages overlap
    for (const Control* one : inside)
      for (const Control* other : added)
        EXPECT_FALSE(Overlap(places.at(one), places.at(other))) << one->name() << " and " << other->name();
    inside.insert(inside.end(), added.begin(), added.end());
  }
  return box.control ? std::vector<const Control*>{box.control} : inside;
}

TEST(LayoutEngine, KeepsTheConfigurationScreenTidyAtEverySize) {
  model::ConfigurationScreen screen;
  const Box layout = screen.Layout();
  const Extent minimum = ui::LayoutEngine(layout, kMetrics).Minimum();
  const Extent more[] = {{0, 0}, {1, 1}, {377, 0}, {0, 254}, {3000, 2000}, {-200, -300}};
  for (const Extent each : more) {
    const Extent size{minimum.width + each.width, minimum.height + each.height};
    SCOPED_TRACE(testing::Message() << size.width << " x " << size.height);
    ExpectTidy(layout, Arrange(layout, size),
               {0, 0, std::max(size.width, minimum.width), std::max(size.height, minimum.height)});
  }
}

TEST(LayoutEngine, AlignsTheFieldsOfFramesInAColumn) {
  model::ConfigurationScreen screen;
  const Places places = Arrange(screen.Layout(), {1000, 700});
  const std::tuple<const Control*, const Control*, bool> pairs[] = {
      {screen.txtNvi(0), screen.txtNvi(18), true},  // one frame
      {screen.txtNvi(0), screen.cbNvi(0), true},    // frames below each other
      {screen.txtNvi(3), screen.txtNvi(16), true}, {screen.txtNvi(3), screen.cbNvi(1), true},
      {screen.txtNvi(14), screen.cbNvi(8), true},   // frames inside a frame
      {screen.txtNvi(14), screen.cbNvi(7), false},  // covers the missing label's cell
      {screen.cbNvi(5), screen.cbNvi(7), true},    {screen.txtNvi(11), screen.txtNvi(15), true},
  };
  for (const auto& [one, other, same_left] : pairs) {
    SCOPED_TRACE(one->name() + " and " + other->name());
    EXPECT_EQ(places.at(one).right(), places.at(other).right());
    EXPECT_EQ(places.at(one).left == places.at(other).left, same_left);
  }
  // Frames side by side have equal columns; another page does not widen them.
  EXPECT_EQ(places.at(screen.txtNvi(0)).width, places.at(screen.txtNvi(3)).width);
  EXPECT_NE(places.at(screen.txtNvi(0)).left, places.at(screen.txtNvi(6)).left);
}

struct StretchWindow {
  ui::Label small{"small", "12345"}, wide{"wide", "1234567890"}, middle{"middle", "1234567"};
  ui::Frame frame{"frame", "Frame"};
  ui::StatusBar bar{"bar", 1};
};

// Places as "left,top widthxheight", in layout order.
const std::tuple<const char*, Box (*)(StretchWindow&), Extent, const char*> kStretchCases[] = {
    {"a row shares its width",
     [](StretchWindow& w) {
       return Box::Row(
           {Box::Leaf(w.small).StretchWidth(), Box::Leaf(w.wide), Box::Leaf(w.middle).StretchWidth()});
     },
     {262, 50},
     "10,19 80x12; 95,19 60x12; 160,19 92x12; "},
    {"a hidden control takes no room",
     [](StretchWindow& w) {
       w.middle.SetVisible(false);
       return Box::Row({Box::Leaf(w.small), Box::Leaf(w.middle).StretchWidth(), Box::Leaf(w.wide)});
     },
     {200, 50},
     "10,19 30x12; 40,25 0x0; 45,19 60x12; "},
    {"a column gives its spare height to its last stretching child",
     [](StretchWindow& w) {
       return Box::Column({Box::Leaf(w.small).StretchHeight(), Box::Leaf(w.middle).StretchHeight(),
                           Box::Leaf(w.wide).StretchWidth()});
     },
     {100, 166},
     "10,10 30x12; 10,27 42x112; 10,144 80x12; "},
    {"a frame beside a label, and the status bar along the edge",
     [](StretchWindow& w) {
       Box framed = Box::Framed(w.frame, Box::Column({Box::Leaf(w.small)})).StretchHeight();
       return Box::Column(
           {Box::Row({std::move(framed), Box::Leaf(w.middle)}).Stretch(), Box::Leaf(w.bar).StretchWidth()});
     },
     {200, 100},
     "10,10 46x67; 18,26 30x12; 65,37 42x12; 0,82 200x18; "},
    {"a form that places its own controls uses the outer size",
     [](StretchWindow& w) {
       const auto place = [&w](double width, double height) {
         return std::vector<ui::Spot>{{&w.small, 15, 0, width - 150, height}};
       };
       return Box::Placed({Box::Leaf(w.small)}, place, 3000, 3000);
     },
     {100, 50},
     "1,0 98x80; "},
};

TEST(LayoutEngine, DistributesSpareRoom) {
  for (const auto& [name, make_layout, client, expected] : kStretchCases) {
    StretchWindow window;
    const Box layout = make_layout(window);
    std::ostringstream places;
    for (const auto& [control, place] : ui::LayoutEngine(layout, kMetrics).Arrange(client))
      places << place.left << "," << place.top << " " << place.width << "x" << place.height << "; ";
    EXPECT_EQ(places.str(), expected) << name;
  }
}

}  // namespace
