#include "model/configuration_screen.h"

#include <algorithm>
#include <utility>

#include "model/catalogue.h"
#include "text/numbers.h"

namespace model {
namespace {

/// Grids of one page share their column widths, so fields are aligned across frames.
constexpr int kFieldGroup = 1;

constexpr int kMostTyped = 64;

std::string ArrayName(const char* array, int index) {
  return std::string(array) + "(" + std::to_string(index) + ")";
}

/// "Heating, Occupied": unlike labels, these names are unique.
std::string SpokenName(const FramePlace& frame, const FieldRow& field) {
  std::string name(frame.caption);
  std::erase(name, '&');
  if (!field.label.empty()) name += ", " + std::string(field.label);
  return name;
}

/// "4.5 to 32 ºC" on its own line; empty if the field has no limits.
std::string TipRange(const FieldRow& field, int display_units) {
  const auto rows = Catalogue();
  const auto row = std::ranges::find(rows, field.control, &CatalogueRow::control);
  if (row == rows.end() || !row->limits) return {};
  const CatalogueLimits& limits = *row->limits;
  const bool metric = display_units == 0;
  const std::string unit = UnitText(field.unit, display_units);
  return "\r\n" + text::ShortestText(metric ? limits.si_min : limits.us_min) + " to " +
         text::ShortestText(metric ? limits.si_max : limits.us_max) + (unit.empty() ? "" : " " + unit);
}

}  // namespace

ConfigurationScreen::ConfigurationScreen()
    : tabData("tabData", {kPageCaptions.begin(), kPageCaptions.end()}) {
  for (const FramePlace& frame : Frames())
    for (const FieldRow& field : frame.fields) MakeControl(field);
  txtMajorVersion.SetLocked(true);
  txtMinorVersion.SetLocked(true);
  tabData.SetAccessibleName("Pages");
  WebBrowser1.SetAccessibleName("Contact");
  lbModel.shows_data = lbHvacType.shows_data = true;
  for (const FieldRow& field : Fields()) Find(field.control)->help_context = HelpContextOf(field.control);
  ShowInitialTexts();
}

void ConfigurationScreen::MakeControl(const FieldRow& place) {
  const ControlRef ref = place.control;
  const auto index = static_cast<std::size_t>(ref.index);
  if (ref.array == ScreenArray::txtNvi) {
    auto field = std::make_unique<ui::TextField>(ArrayName("txtNvi", ref.index));
    field->most_typed = kMostTyped;
    field->SetLocked(IsReadOnlyField(ref.index));
    if (!field->Locked()) editable_fields_.push_back(field.get());
    if (place.unit_label == Unit::Temperature) temperature_fields_.push_back(field.get());
    text_fields_.at(index) = std::move(field);
  } else if (ref.array == ScreenArray::cbNvi) {
    auto list = std::make_unique<ui::ChoiceList>(ArrayName("cbNvi", ref.index));
    const auto items = ListItems(ref.index);
    list->SetItems({items.begin(), items.end()});
    editable_fields_.push_back(list.get());
    choice_lists_.at(index) = std::move(list);
  }
}

ui::TextField* ConfigurationScreen::txtNvi(int index) const {
  return index >= 0 && index < kTextFieldCount ? text_fields_[static_cast<std::size_t>(index)].get()
                                               : nullptr;
}

ui::ChoiceList* ConfigurationScreen::cbNvi(int index) const {
  return index >= 0 && index < kChoiceListCount ? choice_lists_[static_cast<std::size_t>(index)].get()
                                                : nullptr;
}

ui::Control* ConfigurationScreen::Find(ControlRef ref) const {
  auto& self = const_cast<ConfigurationScreen&>(*this);
  switch (ref.array) {
    case ScreenArray::None:
      return nullptr;
    case ScreenArray::txtNvi:
      return txtNvi(ref.index);
    case ScreenArray::cbNvi:
      return cbNvi(ref.index);
    case ScreenArray::txtMajorVersion:
      return &self.txtMajorVersion;
    case ScreenArray::txtMinorVersion:
      return &self.txtMinorVersion;
    case ScreenArray::lbModel:
      return &self.lbModel;
    case ScreenArray::lbHvacType:
      return &self.lbHvacType;
  }
  return nullptr;
}

void ConfigurationScreen::ShowInitialTexts() {
  const auto reset = [](ui::Control& control, const char* text) {
    control.SetText(text);
    control.SetTag(text);
    control.SetForeColor(ui::Color::ButtonText);
  };
  for (const auto& field : text_fields_)
    if (field) reset(*field, "");
  for (const auto& list : choice_lists_)
    if (list) reset(*list, "");
  reset(lbModel, "Undefined model");
  reset(lbHvacType, "HVT_UNKNOWN");
}

ui::Box ConfigurationScreen::Layout() {
  std::vector<ui::Box> pages;
  for (int page = 0; page < static_cast<int>(kPageCaptions.size()); ++page) pages.push_back(PageLayout(page));
  return ui::Box::Pages(tabData, std::move(pages)).Stretch();
}

ui::Box ConfigurationScreen::PageLayout(int page) {
  if (page == kContactPage) return ui::Box::Leaf(WebBrowser1).Stretch();
  std::vector<ui::Box> on_page;
  for (const FramePlace& frame : Frames())
    if (frame.page == page && frame.inside.empty()) on_page.push_back(FrameLayout(frame).StretchWidth());
  ui::Box frames = ui::Box::Grid(kFrameColumns, 0, std::move(on_page)).StretchWidth();
  std::vector<ui::Box> rows;
  if (page == kHardwarePage) {
    ui::Label& heading = NewLabel(std::string(kHardwarePageHeading));
    heading.weight = ui::Label::Weight::Heading;
    rows.push_back(ui::Box::Leaf(heading));
  }
  rows.push_back(std::move(frames));
  return ui::Box::Column(std::move(rows));
}

ui::Box ConfigurationScreen::FrameLayout(const FramePlace& place) {
  frames_.push_back(std::make_unique<ui::Frame>("frame", std::string(place.caption)));
  ui::Frame& frame = *frames_.back();
  std::vector<ui::Box> rows;
  if (!place.heading.empty()) {
    ui::Label& heading = NewLabel(std::string(place.heading));
    heading.weight = ui::Label::Weight::Heading;
    rows.push_back(ui::Box::Leaf(heading));
  }
  if (!place.fields.empty()) rows.push_back(FieldsLayout(place));
  for (const FramePlace& inner : Frames())
    if (!place.caption.empty() && inner.inside == place.caption && inner.page == place.page)
      rows.push_back(FrameLayout(inner).StretchWidth());
  return ui::Box::Framed(frame, ui::Box::Column(std::move(rows)).Stretch()).StretchHeight();
}

ui::Box ConfigurationScreen::FieldsLayout(const FramePlace& place) {
  std::vector<ui::Box> cells;
  for (const FieldRow& field : place.fields) {
    ui::Control* control = Find(field.control);
    control->SetAccessibleName(SpokenName(place, field));
    cells.push_back(field.label.empty() ? ui::Box{} : ui::Box::Leaf(NewLabel(std::string(field.label))));
    cells.push_back(ui::Box::Leaf(*control));
    cells.push_back(UnitLabelOf(field));
  }
  return ui::Box::Grid(3, kFieldGroup, std::move(cells));
}

ui::Box ConfigurationScreen::UnitLabelOf(const FieldRow& field) {
  const auto add = [](auto& labels, const char* array, const std::string& text) -> ui::Box {
    const int index = static_cast<int>(labels.size());
    labels.push_back(std::make_unique<ui::Label>(ArrayName(array, index), text));
    return ui::Box::Leaf(*labels.back());
  };
  const std::string text = UnitText(field.unit_label, 1);
  if (field.unit_label == Unit::Temperature) return add(temperature_units_, "txtTempUnits", text);
  if (field.unit_label == Unit::Percent) return add(percent_units_, "txtPercentUnits", text);
  return text.empty() ? ui::Box{} : ui::Box::Leaf(NewLabel(text));
}

ui::Label& ConfigurationScreen::NewLabel(std::string caption) {
  labels_.push_back(std::make_unique<ui::Label>("label", std::move(caption)));
  return *labels_.back();
}

void ShowFieldTips(ConfigurationScreen& screen, int display_units,
                   const std::function<std::string(const ui::Control&)>& note) {
  for (const FieldRow& field : Fields()) {
    ui::Control& control = *screen.Find(field.control);
    const std::string noted = note(control);
    control.SetToolTip(std::string(field.meaning) + TipRange(field, display_units) +
                       (noted.empty() ? "" : "\r\n" + noted));
  }
}

}  // namespace model
