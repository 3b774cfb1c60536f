#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "ui/control.h"

namespace ui {

/// The place in which a form puts one of its controls itself, in twips of the client area.
struct Spot {
  Control* control;
  double left, top, width, height;
};

/// How the controls of a window are arranged: a tree of rows, columns, grids, frames and tab pages, with the
/// controls as its leaves. Sizes follow from the texts and the font, so nothing is cut off at any resolution.
struct Box {
  enum class Kind {
    Leaf,    // one control
    Empty,   // a grid cell with nothing in it
    Row,     // children side by side
    Column,  // children below each other
    Grid,    // children row by row in `columns` columns; columns of grids of one `group` are equally wide
    Frame,   // a Frame control around its only child
    Pages,   // a Tabs control; one child a page, all the same size
    Placed,  // the form says where each of its children stands; only at the root
  };

  Kind kind = Kind::Empty;
  Control* control = nullptr;
  std::vector<Box> children = {};
  int columns = 0;
  int group = 0;
  /// Takes the room that is left over in the direction of the parent, or across it.
  bool stretch_width = false;
  bool stretch_height = false;
  /// Of placed children: the rule for a window of an outer width and height, and the smallest client area
  /// that it is made for; all in twips.
  using Rule = std::function<std::vector<Spot>(double width, double height)>;
  Rule place = nullptr;
  double least_width = 0;
  double least_height = 0;

  bool IsHidden() const { return kind == Kind::Leaf && !control->Visible(); }
  bool IsGroup() const { return kind == Kind::Frame || kind == Kind::Pages; }
  /// A text field or list. Fields are as wide as their column, so their edges are in line.
  bool IsField() const;
  /// Of a grid: its number of columns, and the first of the empty cells that a field covers; its own column
  /// if there is none.
  std::size_t ColumnCount() const { return columns < 1 ? 1 : static_cast<std::size_t>(columns); }
  std::size_t FirstColumn(std::size_t index) const;

  static Box Leaf(Control& control) { return {.kind = Kind::Leaf, .control = &control}; }
  static Box Row(std::vector<Box> children) { return {.kind = Kind::Row, .children = std::move(children)}; }
  static Box Column(std::vector<Box> children) {
    return {.kind = Kind::Column, .children = std::move(children)};
  }
  static Box Grid(int columns, int group, std::vector<Box> children) {
    return {.kind = Kind::Grid, .children = std::move(children), .columns = columns, .group = group};
  }
  static Box Framed(Control& frame, Box child) {
    return {.kind = Kind::Frame, .control = &frame, .children = {std::move(child)}};
  }
  static Box Pages(Control& tabs, std::vector<Box> pages) {
    return {.kind = Kind::Pages, .control = &tabs, .children = std::move(pages)};
  }

  static Box Placed(std::vector<Box> children, Rule place, double least_width, double least_height) {
    Box box{.kind = Kind::Placed, .children = std::move(children)};
    box.place = std::move(place);
    box.least_width = least_width;
    box.least_height = least_height;
    return box;
  }

  Box StretchWidth() && {
    stretch_width = true;
    return std::move(*this);
  }
  Box StretchHeight() && {
    stretch_height = true;
    return std::move(*this);
  }
  Box Stretch() && {
    stretch_width = stretch_height = true;
    return std::move(*this);
  }
};

/// The texts about the device outside of fields, as the window shows them now: those of its data labels and
/// the panels of its status bar. Empty ones are left out.
std::vector<std::string> DataTexts(const Box& layout);

}  // namespace ui
