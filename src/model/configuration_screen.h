#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/screen_layout.h"
#include "ui/controls.h"
#include "ui/layout.h"

namespace model {

/// The controls of the configuration screen, built from its table: the control arrays by index, the frames
/// and labels, and the tab control that holds the pages.
class ConfigurationScreen {
 public:
  ConfigurationScreen();

  /// Indices of txtNvi are below this; not every index has a field.
  static constexpr int kTextFieldCount = 42;
  /// Null if the array has no such element.
  ui::TextField* txtNvi(int index) const;
  ui::ChoiceList* cbNvi(int index) const;
  /// Null for ScreenArray::None and for elements that do not exist.
  ui::Control* Find(ControlRef ref) const;

  /// The editable fields and lists of the device, in screen order.
  const std::vector<ui::Field*>& EditableFields() const { return editable_fields_; }
  /// The fields with the temperature unit beside them.
  const std::vector<ui::TextField*>& TemperatureFields() const { return temperature_fields_; }

  const std::vector<std::unique_ptr<ui::Label>>& txtTempUnits() const { return temperature_units_; }
  const std::vector<std::unique_ptr<ui::Label>>& txtPercentUnits() const { return percent_units_; }

  ui::Tabs tabData;
  ui::TextField txtMajorVersion{"txtMajorVersion"};
  ui::TextField txtMinorVersion{"txtMinorVersion"};
  ui::Label lbModel{"lbModel"};
  ui::Label lbHvacType{"lbHvacType"};
  ui::WebView WebBrowser1{"WebBrowser1"};

  /// Restores the texts of the layout: empty fields and lists, initial labels, no marks.
  void ShowInitialTexts();

  /// The tab control with its pages, for a window's layout.
  ui::Box Layout();

 private:
  void MakeControl(const FieldRow& place);
  ui::Box PageLayout(int page);
  ui::Box FrameLayout(const FramePlace& place);
  ui::Box FieldsLayout(const FramePlace& place);
  ui::Box UnitLabelOf(const FieldRow& field);
  ui::Label& NewLabel(std::string caption);

  std::array<std::unique_ptr<ui::TextField>, kTextFieldCount> text_fields_;
  std::array<std::unique_ptr<ui::ChoiceList>, kChoiceListCount> choice_lists_;
  std::vector<ui::Field*> editable_fields_;
  std::vector<ui::TextField*> temperature_fields_;
  std::vector<std::unique_ptr<ui::Label>> temperature_units_;
  std::vector<std::unique_ptr<ui::Label>> percent_units_;
  std::vector<std::unique_ptr<ui::Label>> labels_;
  std::vector<std::unique_ptr<ui::Frame>> frames_;
};

/// Sets each field's tooltip: its meaning and, for a number, its range in these display units (0 Celsius, 1
/// Fahrenheit) with the unit that the screen shows. A note about the field, if any, follows on its own line.
void ShowFieldTips(ConfigurationScreen& screen, int display_units,
                   const std::function<std::string(const ui::Control&)>& note);

}  // namespace model
