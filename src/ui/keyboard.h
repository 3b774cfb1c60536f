#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "ui/controls.h"
#include "ui/layout.h"

/// How the keyboard walks a window. The order is the layout's: a tab control before its pages, pages in
/// order. Only what can be seen and used takes part: visible, enabled, on the page in front.
namespace ui {

/// The letter after the single "&" of a caption, in lower case; 0 for none.
char32_t AcceleratorOf(const std::string& caption);

/// The control to which the Tab key leads from another one; from null to the first. Of a group of option
/// buttons only the selected one, or the first where none is selected. Null where there is none.
enum class Direction { Forward, Backward };
Control* NextControl(const Box& layout, const Control* from, Direction direction);

/// The option button before or after one in its frame, going round.
OptionButton* NextOption(const Box& layout, const OptionButton& from, Direction direction);
/// The option buttons that stand in the same frame, itself included.
std::vector<OptionButton*> OptionsAround(const Box& layout, const OptionButton& option);

/// What a letter pressed with Alt leads to.
struct Accelerator {
  /// The control that takes the focus or is pressed. A label and a frame lead to the next control that takes
  /// the focus.
  Control* control = nullptr;
  /// The page to bring to the front, where the control is a tab control.
  std::optional<std::size_t> page;
  /// Nothing else answers to the letter, so that a button is pressed and not just focused.
  bool only_one = true;
};
/// Where several captions share a letter, the one after the active control or the page in front.
std::optional<Accelerator> FindAccelerator(const Box& layout, char32_t letter, const Control* active);

/// The pages that must come to the front, outermost first, for a control to be seen.
struct PagePlace {
  Tabs* tabs;
  std::size_t page;
};
std::vector<PagePlace> PagesAround(const Box& layout, const Control& control);

}  // namespace ui
