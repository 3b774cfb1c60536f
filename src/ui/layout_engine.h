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

/// What a layout needs to know of the font and the resolution. All answers are in pixels.
class Metrics {
 public:
  virtual ~Metrics() = default;

  /// The size in which nothing of the control is cut. For a frame that of its caption, for tabs that of the
  /// row of captions.
  virtual Extent PreferredSize(const Control& control) const = 0;
  /// Border, caption and padding of a frame on a page or window, or inside another frame.
  virtual Insets FrameInsets(const Control& frame, bool nested) const = 0;
  /// From the tab control's edges to its page.
  virtual Insets TabInsets(const Control& tabs) const = 0;
  /// Around the content of a window or page.
  virtual int Margin() const = 0;
  /// Between two controls.
  virtual int ControlGap() const = 0;
  /// Between two of which one is a frame or a tab control.
  virtual int GroupGap() const = 0;
  /// How many twips a pixel has.
  virtual double TwipsPerPixel() const = 0;
  /// What the window has around its client area.
  virtual Extent Frame() const { return {}; }
};

struct Placement {
  Control* control;
  Rectangle rectangle;
};

/// Computes the places of a layout's controls.
///
/// It measures once, when it is made, and arranges for any size; it is made anew when a text has changed. The
/// layout and the metrics must outlive it. The rules:
/// - A hidden control and the gap beside it take no room.
/// - Nothing is made smaller than it was measured: in a window below the minimum the right and the bottom are
///   cut.
/// - Left-over width is shared by the stretching children of a row; of a grid's stretching columns the narrow
///   ones get it until all are equally wide. Left-over height goes to the last stretching child of a column,
///   so that columns side by side stay in line.
/// - Grids of one group share their column widths when they are on the same page. A text field or list is
/// as wide as its column, and takes in empty cells before it.
/// - A status bar at the end of the window's column lies along the window's edge, outside the margin.
class LayoutEngine {
 public:
  LayoutEngine(const Box& layout, const Metrics& metrics);

  /// The smallest client area that cuts nothing.
  Extent Minimum() const { return minimum_; }

  /// All controls in layout order, a frame and a tab control before their content, in coordinates of
  /// the client area. Controls on all pages are placed.
  std::vector<Placement> Arrange(Extent client) const;

 private:
  /// Grids with equal keys share their columns: group and page.
  using GroupKey = std::pair<int, int>;
  struct Node {
    const Box* box = nullptr;
    Extent size;
    GroupKey key;
    bool nested = false;  // inside a frame
    std::vector<Node> children;
    std::vector<int> columns;  // of a grid: the widths
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
