#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <initializer_list>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ui/control.h"

namespace ui {

/// A control that the user edits.
class Field : public Control {
 public:
  /// A locked field takes no input, but its text can be selected and copied.
  bool Locked() const { return locked_; }
  void SetLocked(bool locked) { Set(locked_, locked, Aspect::Locked); }

  /// The user changed the text; Text() is already the new one.
  std::function<void()> on_change;
  /// A key went down: virtual key code and KeyState bits. True if the handler used the key.
  std::function<bool(int key, int state)> on_key_down;
  /// The user resets this field from its menu. The menu item is enabled while can_put_back is true; without a
  /// handler there is no such item.
  std::function<void()> on_put_back;
  std::function<bool()> can_put_back;
  bool CanBePutBack() const { return can_put_back && can_put_back(); }
  void UserPutsBack() const {
    if (CanBePutBack()) on_put_back();
  }

 protected:
  using Control::Control;
  void TakeChange(std::string text) {
    TakeUserText(std::move(text));
    if (on_change) on_change();
  }

 private:
  bool locked_ = false;
};

class TextField : public Field {
 public:
  explicit TextField(std::string name) : Field(Kind::TextField, std::move(name)) {}

  /// The visible width in digits; 0 leaves it to the layout.
  int columns = 8;
  /// The maximum number of characters after typing and pasting; texts that the program sets may be longer. 0
  /// leaves it to the system. Set before the window is created.
  int most_typed = 0;

  /// The user changed the text.
  void UserChangesText(std::string text) { TakeChange(std::move(text)); }
  /// A character is about to be entered. False refuses it.
  std::function<bool(char32_t character)> on_key_press;
  /// The focus is about to move to another control of the window.
  std::function<void()> on_validate;
};

/// A drop-down list. Its text need not be one of the items: a value from the device is shown as it is.
class ChoiceList : public Field {
 public:
  explicit ChoiceList(std::string name) : Field(Kind::ChoiceList, std::move(name)) {}

  const std::vector<std::string>& Items() const { return items_; }
  void SetItems(std::vector<std::string> items) { Set(items_, std::move(items), Aspect::Items); }

  void UserChooses(std::string item) { TakeChange(std::move(item)); }
  std::function<void()> on_drop_down;

 private:
  std::vector<std::string> items_;
};

class Label : public Control {
 public:
  explicit Label(std::string name, std::string caption = {}) : Control(Kind::Label, std::move(name)) {
    SetText(std::move(caption));
  }
  enum class Weight { Normal, Heading };
  Weight weight = Weight::Normal;
  /// The label shows a value from the device and not a caption, so "&" is no accelerator.
  bool shows_data = false;
  /// The room to keep for later texts, in digits; a longer text is cut with an ellipsis. 0 means the width of
  /// the text.
  int columns = 0;
  /// The number of lines to keep room for; with more than one, long lines wrap.
  int lines = 1;
};

class Button : public Control {
 public:
  enum class Picture { None, Help, Log, Settings };
  Button(std::string name, std::string caption) : Control(Kind::Button, std::move(name)) {
    SetText(std::move(caption));
  }

  Picture picture = Picture::None;
  /// Shows the shield of actions that need administrator rights. Set before the window is created.
  bool shield = false;
  std::function<void()> on_click;
  void UserClicks() {
    if (Enabled() && on_click) on_click();
  }
};

/// One of the option buttons in the same frame, of which one is selected.
class OptionButton : public Control {
 public:
  OptionButton(std::string name, std::string caption) : Control(Kind::OptionButton, std::move(name)) {
    SetText(std::move(caption));
  }
  bool Selected() const { return selected_; }
  void SetSelected(bool selected) { Set(selected_, selected, Aspect::Selection); }

  std::function<void()> on_click;
  void UserClicks() {
    if (Enabled() && on_click) on_click();
  }

 private:
  bool selected_ = false;
};

class CheckBox : public Control {
 public:
  CheckBox(std::string name, std::string caption) : Control(Kind::CheckBox, std::move(name)) {
    SetText(std::move(caption));
  }
  bool Checked() const { return checked_; }
  void SetChecked(bool checked) { Set(checked_, checked, Aspect::Selection); }
  void UserChecks(bool checked) {
    checked_ = checked;
    if (on_click) on_click();
  }
  std::function<void()> on_click;

 private:
  bool checked_ = false;
};

/// A titled border around other controls; without a caption a plain border.
class Frame : public Control {
 public:
  explicit Frame(std::string name, std::string caption = {}) : Control(Kind::Frame, std::move(name)) {
    SetText(std::move(caption));
  }
};

class Tabs : public Control {
 public:
  Tabs(std::string name, std::vector<std::string> captions)
      : Control(Kind::Tabs, std::move(name)), captions_(std::move(captions)) {}

  const std::vector<std::string>& Captions() const { return captions_; }
  std::size_t Selected() const { return selected_; }
  /// Brings a page to the front, for the program and the user alike.
  void Select(std::size_t page) {
    if (page == selected_ || page >= captions_.size()) return;
    selected_ = page;
    Notify(Aspect::Selection);
    if (on_select) on_select();
  }
  std::function<void()> on_select;

  /// The pages whose tabs have a mark.
  const std::set<std::size_t>& Marked() const { return marked_; }
  void SetMarked(std::set<std::size_t> pages) { Set(marked_, std::move(pages), Aspect::Marks); }

 private:
  std::set<std::size_t> marked_;
  std::vector<std::string> captions_;
  std::size_t selected_ = 0;
};

/// Pictures by key, as icons for a list; the window system draws them for its resolution.
class ImageList {
 public:
  enum class Picture { GreenMark, RedMark };
  struct Image {
    std::string key;
    Picture picture;
  };
  ImageList(std::initializer_list<Image> images) : images_(images) {}

  const std::vector<Image>& Images() const { return images_; }
  /// The index of a picture, from 0; nothing if no picture has the key.
  std::optional<std::size_t> Find(std::string_view key) const;

 private:
  std::vector<Image> images_;
};

/// A report list whose rows are only appended or cleared; the window asks for the rows it shows.
class ListView : public Control {
 public:
  /// A row's icon; KeyOf is the key of its picture.
  enum class Icon { None, Green, Red };
  static std::string_view KeyOf(Icon icon) {
    return icon == Icon::Green ? "Green" : icon == Icon::Red ? "Red" : "";
  }
  /// The pictures; null for none. Set before the window is created.
  const ImageList* small_icons = nullptr;
  /// The texts of a row in one string, as there may be a million rows. A text ends at a NUL character.
  class Cells {
   public:
    Cells(std::initializer_list<std::string> texts);
    std::size_t size() const;
    /// Empty beyond the last one.
    std::string operator[](std::size_t column) const;

   private:
    std::string joined_;
  };
  struct Row {
    Icon icon;
    Cells cells;
    /// Whether the row's box is ticked; nothing for a row without a box.
    std::optional<bool> tick = std::nullopt;
  };
  /// Rows may have boxes. Set before the window is created.
  bool has_ticks = false;
  /// The list scrolls to its last row whenever rows are appended.
  bool follows_end = false;
  ListView(std::string name, std::vector<std::string> headers)
      : Control(Kind::ListView, std::move(name)), headers_(std::move(headers)) {}

  const std::vector<std::string>& Headers() const { return headers_; }
  const std::deque<Row>& Rows() const { return rows_; }
  /// The cell's text with blanks for tabs and line breaks, which the list cannot show.
  std::string ShownText(std::size_t row, std::size_t column) const;
  void Append(Row row) {
    rows_.push_back(std::move(row));
    Notify(Aspect::Rows);
  }
  void Clear() {
    rows_.clear();
    selected_.reset();
    Notify(Aspect::Rows);
  }
  /// Copies rows for the user: cells as shown, tabs between them, CR LF after each row.
  void UserCopies(std::span<const std::size_t> rows) const;
  std::function<void(const std::string& text)> on_copy;

  /// The user ticks or unticks a row's box.
  void UserTicks(std::size_t row, bool tick);
  std::function<void(std::size_t row)> on_tick;

  /// The first of the rows that the user has selected.
  std::optional<std::size_t> Selected() const { return selected_; }
  void UserSelects(std::optional<std::size_t> row);
  std::function<void()> on_select;
  /// The user double-clicks a row, which is then the selected one.
  std::function<void()> on_double_click;

 private:
  std::vector<std::string> headers_;
  std::deque<Row> rows_;
  std::optional<std::size_t> selected_;
};

class StatusBar : public Control {
 public:
  /// Widths of the panels in digits; 0 takes the rest. If empty, all are equally wide.
  std::vector<int> columns;

  StatusBar(std::string name, std::size_t panels)
      : Control(Kind::StatusBar, std::move(name)), panels_(panels) {}

  const std::vector<std::string>& Panels() const { return panels_; }
  /// Panels count from 1.
  void SetPanel(std::size_t number, std::string text) {
    Set(panels_.at(number - 1), std::move(text), Aspect::Text);
  }

 private:
  std::vector<std::string> panels_;
};

/// Shows a page, or its text if there is no HTML engine. Both are set before the window is first shown.
class WebView : public Control {
 public:
  explicit WebView(std::string name) : Control(Kind::WebView, std::move(name)) {}
  std::string url;
};

/// Shows a bitmap of the program's resources, scaled to a size in twips.
class Picture : public Control {
 public:
  Picture(std::string name, int bitmap, double shown_width, double shown_height)
      : Control(Kind::Picture, std::move(name)), resource(bitmap), width(shown_width), height(shown_height) {}
  const int resource;
  const double width, height;
};

/// The area in which an animation plays.
class AnimationHost : public Control {
 public:
  explicit AnimationHost(std::string name) : Control(Kind::AnimationHost, std::move(name)) {}
};

}  // namespace ui
