#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "ui/control.h"

namespace ui {

/// The place of a control that the form computes itself, in twips of the client area.
struct Spot {
  Control* control;
  double left, top, width, height;
};

/// The arrangement of a window's controls: a tree of rows, columns, grids, frames and tab pages, with
/// controls as leaves. Sizes follow from the texts and the font, so nothing is cut off at any resolution.
struct Box {
  enum class Kind {
    Leaf,    // one control
    Empty,   // an empty grid cell
    Row,     // children side by side
    Column,  // children below each other
    Grid,    // children row by row in `columns` columns; columns of grids of one `group` are equally wide
    Frame,   // a Frame control around its only child
    Pages,   // a Tabs control; one child per page, all of the same size
    Placed,  // the form computes the places of the children; only at the root
  };

  Kind kind = Kind::Empty;
  Control* control = nullptr;
  std::vector<Box> children = {};
  int columns = 0;
  int group = 0;
  /// Takes part of the room left over in that direction.
  bool stretch_width = false;
  bool stretch_height = false;
  /// For placed children: computes their places for a window of an outer width and height, and the smallest
  /// client area that it supports; all in twips.
  using Rule = std::function<std::vector<Spot>(double width, double height)>;
  Rule place = nullptr;
  double least_width = 0;
  double least_height = 0;

  bool IsHidden() const { return kind == Kind::Leaf && !control->Visible(); }
  bool IsGroup() const { return kind == Kind::Frame || kind == Kind::Pages; }
  /// A text field or list. Fields are as wide as their column, so their edges are aligned.
  bool IsField() const;
  /// For a grid: the number of columns, and the first of the empty cells that a field covers, or else its own
  /// column.
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

/// The non-empty texts about the device outside of fields, as shown now: data labels and status bar panels.
std::vector<std::string> DataTexts(const Box& layout);

}  // namespace ui
