#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "ui/control.h"

namespace ui {

/// How the controls of a window are arranged: a tree of rows, columns, grids, frames and tab pages with the
/// controls as its leaves. Sizes follow from the texts and the font, so that nothing is cut at any
/// resolution.
struct Box {
  enum class Kind {
    Leaf,    // one control
    Empty,   // a grid cell with nothing in it
    Row,     // children side by side
    Column,  // children below each other
    Grid,    // children row by row in `columns` columns; columns of grids of one `group` are equally wide
    Frame,   // a Frame control around its only child
    Pages,   // a Tabs control; one child a page, all the same size
  };

  Kind kind = Kind::Empty;
  Control* control = nullptr;
  std::vector<Box> children;
  int columns = 0;
  int group = 0;
  /// Takes the room that is left over in the direction of the parent, or across it.
  bool stretch_width = false;
  bool stretch_height = false;

  static Box Leaf(Control& control) { return {Kind::Leaf, &control, {}, 0, 0, false, false}; }
  static Box Row(std::vector<Box> children) {
    return {Kind::Row, nullptr, std::move(children), 0, 0, false, false};
  }
  static Box Column(std::vector<Box> children) {
    return {Kind::Column, nullptr, std::move(children), 0, 0, false, false};
  }
  static Box Grid(int columns, int group, std::vector<Box> children) {
    return {Kind::Grid, nullptr, std::move(children), columns, group, false, false};
  }
  static Box Framed(Control& frame, Box child) {
    return {Kind::Frame, &frame, {std::move(child)}, 0, 0, false, false};
  }
  static Box Pages(Control& tabs, std::vector<Box> pages) {
    return {Kind::Pages, &tabs, std::move(pages), 0, 0, false, false};
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

}  // namespace ui
