#pragma once

#include <map>
#include <utility>
#include <vector>

#include "ui/layout.h"

namespace ui {

/// Sizes and places in pixels.
struct Extent {
  int width = 0;
  int height = 0;
  friend bool operator==(const Extent&, const Extent&) = default;
};
struct Insets {
  int left = 0, top = 0, right = 0, bottom = 0;
};
struct Rectangle {
  int left = 0, top = 0, width = 0, height = 0;
  int right() const { return left + width; }
  int bottom() const { return top + height; }
  friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

/// What a layout needs to know of the font and the resolution, in pixels.
class Metrics {
 public:
  virtual ~Metrics() = default;

  /// The smallest size that cuts nothing. For frames the size of the caption, for tabs that of the row of
  /// captions.
  virtual Extent PreferredSize(const Control& control) const = 0;
  /// Border, caption and padding of a frame on a page or window, or in another frame.
  virtual Insets FrameInsets(const Control& frame, bool nested) const = 0;
  /// From the edges of the tab control to its page.
  virtual Insets TabInsets(const Control& tabs) const = 0;
  /// Around the content of a window or page.
  virtual int Margin() const = 0;
  /// Between two controls.
  virtual int ControlGap() const = 0;
  /// Between two children if one is a frame or a tab control.
  virtual int GroupGap() const = 0;
  virtual double TwipsPerPixel() const = 0;
  /// The window's borders outside its client area.
  virtual Extent Frame() const { return {}; }
};

struct Placement {
  Control* control;
  Rectangle rectangle;
};

/// Computes the places of a layout's controls.
///
/// It measures once, when constructed, and arranges for any size; construct it again when a text has changed.
/// The layout and the metrics must outlive it. The rules:
/// - A hidden control and its gap take no room.
/// - Nothing gets smaller than its measured size: a window below the minimum cuts the right and the bottom.
/// - The stretching children of a row share the width left over; in a grid the narrowest stretching columns
///   get it first. Height left over goes to the last stretching child of a column, so that columns side by
///   side stay aligned.
/// - Grids of one group on the same page share their column widths. A text field or list is as wide as its
///   column and covers empty cells before it.
/// - A status bar at the end of the window's column is at the window's edge, outside the margin.
class LayoutEngine {
 public:
  LayoutEngine(const Box& layout, const Metrics& metrics);

  /// The smallest client area that cuts nothing.
  Extent Minimum() const { return minimum_; }

  /// All controls in layout order, a frame or tab control before its content, in coordinates of the client
  /// area. Includes controls on hidden pages.
  std::vector<Placement> Arrange(Extent client) const;

 private:
  /// Grids with equal keys (group and page) share their columns.
  using GroupKey = std::pair<int, int>;
  struct Node {
    const Box* box = nullptr;
    Extent size;
    GroupKey key;
    bool nested = false;  // in a frame
    std::vector<Node> children;
    std::vector<int> columns;  // widths of a grid's columns
  };
  struct Around {
    int page = 0;
    bool in_frame = false;
  };

  Node Build(const Box& box, Around around);
  void Measure(Node& node);
  void MeasureLine(Node& node) const;
  void MeasureGrid(Node& node);
  void MeasureFrame(Node& node) const;
  void MeasurePages(Node& node) const;
  std::vector<int> OwnColumns(const Node& grid, std::vector<int> widths) const;
  int InPixels(double twips) const;
  int GapBefore(const Node& line, std::size_t index) const;
  int GridGap(const Node& grid) const;
  std::vector<int> RowHeights(const Node& grid) const;
  int ColumnLeft(const Node& grid, const std::vector<int>& columns, std::size_t column) const;

  void Place(const Node& node, Rectangle area, std::vector<Placement>& placed) const;
  void PlaceRow(const Node& node, Rectangle area, std::vector<Placement>& placed) const;
  void PlaceColumn(const Node& node, Rectangle area, std::vector<Placement>& placed) const;
  std::vector<Placement> PlacedByForm(Extent client) const;
  void PlaceGrid(const Node& node, Rectangle area, std::vector<Placement>& placed) const;
  std::vector<int> StretchedColumns(const Node& grid, int width) const;
  bool EndsWithStatusBar() const;

  const Metrics& metrics_;
  std::map<GroupKey, std::vector<int>> shared_columns_;
  Node root_;
  Extent minimum_;
};

}  // namespace ui
