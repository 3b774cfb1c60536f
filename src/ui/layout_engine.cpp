#include "ui/layout_engine.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <set>

namespace ui {
namespace {

Rectangle Inside(const Rectangle& outer, const Insets& insets) {
  return {outer.left + insets.left, outer.top + insets.top, outer.width - insets.left - insets.right,
          outer.height - insets.top - insets.bottom};
}

/// A child in its cell: stretched or at its own size. A single control is centred in its row, so a label is
/// level with the field beside it.
Rectangle InCell(const Box& box, Extent size, Rectangle cell) {
  if (!box.stretch_width && !box.IsField()) cell.width = std::min(cell.width, size.width);
  if (!box.stretch_height) {
    if (box.kind == Box::Kind::Leaf) cell.top += std::max(0, cell.height - size.height) / 2;
    cell.height = std::min(cell.height, size.height);
  }
  return cell;
}

}  // namespace

LayoutEngine::LayoutEngine(const Box& layout, const Metrics& metrics) : metrics_(metrics) {
  root_ = Build(layout, {});
  Measure(root_);  // finds the shared widths
  Measure(root_);  // and uses them
  const int margin = layout.kind == Box::Kind::Placed ? 0 : metrics_.Margin();
  minimum_ = {root_.size.width + 2 * margin, root_.size.height + (EndsWithStatusBar() ? margin : 2 * margin)};
}

LayoutEngine::Node LayoutEngine::Build(const Box& box, Around around) {
  Node node;
  node.box = &box;
  node.key = {box.group, around.page};
  node.nested = around.in_frame;
  if (box.kind == Box::Kind::Frame) around.in_frame = true;
  for (std::size_t i = 0; i < box.children.size(); ++i) {
    if (box.kind == Box::Kind::Pages) around.page = static_cast<int>(i) + 1;
    node.children.push_back(Build(box.children[i], around));
  }
  return node;
}

int LayoutEngine::InPixels(double twips) const {
  return static_cast<int>(std::lround(twips / metrics_.TwipsPerPixel()));
}

std::vector<Placement> LayoutEngine::PlacedByForm(Extent client) const {
  const Extent frame = metrics_.Frame();
  const double twips = metrics_.TwipsPerPixel();
  std::vector<Placement> placed;
  for (const Spot& spot :
       root_.box->place((client.width + frame.width) * twips, (client.height + frame.height) * twips))
    placed.push_back({spot.control,
                      {InPixels(spot.left), InPixels(spot.top), std::max(0, InPixels(spot.width)),
                       std::max(0, InPixels(spot.height))}});
  return placed;
}

bool LayoutEngine::EndsWithStatusBar() const {
  if (root_.box->kind != Box::Kind::Column || root_.children.empty()) return false;
  const Control* last = root_.children.back().box->control;
  return last && last->kind() == Control::Kind::StatusBar;
}

/// The gap between a child of a row or column and the one before it; a child without size has no gap.
int LayoutEngine::GapBefore(const Node& line, std::size_t index) const {
  const Node& child = line.children[index];
  if (child.size.height == 0) return 0;
  for (std::size_t i = index; i-- > 0;) {
    const Node& before = line.children[i];
    if (before.size.height == 0) continue;
    return before.box->IsGroup() || child.box->IsGroup() ? metrics_.GroupGap() : metrics_.ControlGap();
  }
  return 0;
}

void LayoutEngine::Measure(Node& node) {
  for (Node& child : node.children) Measure(child);
  switch (node.box->kind) {
    case Box::Kind::Leaf:
      node.size = node.box->IsHidden() ? Extent{} : metrics_.PreferredSize(*node.box->control);
      break;
    case Box::Kind::Empty:
      break;
    case Box::Kind::Row:
    case Box::Kind::Column:
      return MeasureLine(node);
    case Box::Kind::Grid:
      return MeasureGrid(node);
    case Box::Kind::Frame:
      return MeasureFrame(node);
    case Box::Kind::Pages:
      return MeasurePages(node);
    case Box::Kind::Placed:
      node.size = {InPixels(node.box->least_width), InPixels(node.box->least_height)};
      break;
  }
}

void LayoutEngine::MeasureLine(Node& node) const {
  node.size = {};
  for (std::size_t i = 0; i < node.children.size(); ++i) {
    const Extent child = node.children[i].size;
    const int gap = GapBefore(node, i);
    if (node.box->kind == Box::Kind::Row)
      node.size = {node.size.width + gap + child.width, std::max(node.size.height, child.height)};
    else
      node.size = {std::max(node.size.width, child.width), node.size.height + gap + child.height};
  }
}

std::vector<int> LayoutEngine::OwnColumns(const Node& grid, std::vector<int> widths) const {
  widths.resize(grid.box->ColumnCount());
  const auto widen = [&](bool spanning) {
    for (std::size_t i = 0; i < grid.children.size(); ++i) {
      const std::size_t column = i % widths.size(), first = grid.box->FirstColumn(i);
      if ((first != column) != spanning) continue;
      const int before = ColumnLeft(grid, widths, column) - ColumnLeft(grid, widths, first);
      widths[column] = std::max(widths[column], grid.children[i].size.width - before);
    }
  };
  widen(false);
  widen(true);
  return widths;
}

void LayoutEngine::MeasureGrid(Node& node) {
  if (node.box->group == 0) {
    node.columns = OwnColumns(node, {});
  } else {
    std::vector<int>& shared = shared_columns_[node.key];
    shared = OwnColumns(node, std::move(shared));
    node.columns = shared;
  }
  const std::vector<int> heights = RowHeights(node);
  const int gaps = heights.empty() ? 0 : static_cast<int>(heights.size() - 1) * GridGap(node);
  node.size = {ColumnLeft(node, node.columns, node.columns.size()),
               std::accumulate(heights.begin(), heights.end(), gaps)};
}

void LayoutEngine::MeasureFrame(Node& node) const {
  const Insets insets = metrics_.FrameInsets(*node.box->control, node.nested);
  const Extent caption = metrics_.PreferredSize(*node.box->control);
  const Extent child = node.children.at(0).size;
  node.size = {std::max(child.width + insets.left + insets.right, caption.width),
               std::max(child.height + insets.top + insets.bottom, caption.height)};
}

void LayoutEngine::MeasurePages(Node& node) const {
  const Insets insets = metrics_.TabInsets(*node.box->control);
  const int margins = 2 * metrics_.Margin();
  Extent page;
  for (const Node& child : node.children)
    page = {std::max(page.width, child.size.width), std::max(page.height, child.size.height)};
  const Extent captions = metrics_.PreferredSize(*node.box->control);
  node.size = {std::max(page.width + margins + insets.left + insets.right, captions.width),
               page.height + margins + insets.top + insets.bottom};
}

int LayoutEngine::GridGap(const Node& grid) const {
  const bool groups = std::any_of(grid.children.begin(), grid.children.end(),
                                  [](const Node& child) { return child.box->IsGroup(); });
  return groups ? metrics_.GroupGap() : metrics_.ControlGap();
}

std::vector<int> LayoutEngine::RowHeights(const Node& grid) const {
  const std::size_t columns = grid.box->ColumnCount();
  std::vector<int> heights((grid.children.size() + columns - 1) / columns);
  for (std::size_t i = 0; i < grid.children.size(); ++i)
    heights[i / columns] = std::max(heights[i / columns], grid.children[i].size.height);
  return heights;
}

int LayoutEngine::ColumnLeft(const Node& grid, const std::vector<int>& columns, std::size_t column) const {
  int left = 0;
  bool any = false;
  for (std::size_t i = 0; i < columns.size() && i <= column; ++i) {
    if (columns[i] == 0) continue;
    if (any) left += GridGap(grid);
    if (i == column) return left;
    left += columns[i];
    any = true;
  }
  return left;
}

std::vector<Placement> LayoutEngine::Arrange(Extent client) const {
  if (root_.box->kind == Box::Kind::Placed) return PlacedByForm(client);
  const int margin = metrics_.Margin();
  Rectangle area{margin, margin, std::max(client.width, minimum_.width) - 2 * margin,
                 std::max(client.height, minimum_.height) - margin};
  if (!EndsWithStatusBar()) area.height -= margin;
  std::vector<Placement> placed;
  Place(root_, area, placed);
  if (EndsWithStatusBar()) {
    placed.back().rectangle.left = 0;
    placed.back().rectangle.width = area.width + 2 * margin;
  }
  return placed;
}

void LayoutEngine::Place(const Node& node, Rectangle area, std::vector<Placement>& placed) const {
  if (node.box->control) placed.push_back({node.box->control, area});
  switch (node.box->kind) {
    case Box::Kind::Leaf:
    case Box::Kind::Empty:
    case Box::Kind::Placed:
      return;
    case Box::Kind::Row:
      return PlaceRow(node, area, placed);
    case Box::Kind::Column:
      return PlaceColumn(node, area, placed);
    case Box::Kind::Grid:
      return PlaceGrid(node, area, placed);
    case Box::Kind::Frame:
      return Place(node.children.at(0), Inside(area, metrics_.FrameInsets(*node.box->control, node.nested)),
                   placed);
    case Box::Kind::Pages: {
      const int margin = metrics_.Margin();
      const Insets insets = metrics_.TabInsets(*node.box->control);
      const Rectangle page = Inside(Inside(area, insets), {margin, margin, margin, margin});
      // In a large window fields stay beside their labels.
      Rectangle middle = page;
      middle.width = std::min(page.width, node.size.width - insets.left - insets.right - 2 * margin);
      middle.left += (page.width - middle.width) / 2;
      for (const Node& child : node.children) Place(child, child.box->stretch_height ? page : middle, placed);
    }
  }
}

void LayoutEngine::PlaceRow(const Node& node, Rectangle area, std::vector<Placement>& placed) const {
  int left_over = std::max(0, area.width - node.size.width), sharing = 0;
  const auto shares = [](const Node& child) { return child.box->stretch_width && !child.box->IsHidden(); };
  for (const Node& child : node.children) sharing += shares(child) ? 1 : 0;
  int left = area.left;
  for (std::size_t i = 0; i < node.children.size(); ++i) {
    const Node& child = node.children[i];
    left += GapBefore(node, i);
    int width = child.size.width;
    if (shares(child)) {
      const int share = left_over / sharing--;
      width += share;
      left_over -= share;
    }
    Place(child, InCell(*child.box, child.size, {left, area.top, width, area.height}), placed);
    left += width;
  }
}

void LayoutEngine::PlaceColumn(const Node& node, Rectangle area, std::vector<Placement>& placed) const {
  const auto last = std::find_if(node.children.rbegin(), node.children.rend(),
                                 [](const Node& child) { return child.box->stretch_height; });
  int top = area.top;
  for (std::size_t i = 0; i < node.children.size(); ++i) {
    const Node& child = node.children[i];
    top += GapBefore(node, i);
    int height = child.size.height;
    if (last != node.children.rend() && &child == &*last)
      height += std::max(0, area.height - node.size.height);
    Rectangle cell{area.left, top, area.width, height};
    if (!child.box->stretch_width) cell.width = std::min(cell.width, child.size.width);
    Place(child, cell, placed);
    top += height;
  }
}

std::vector<int> LayoutEngine::StretchedColumns(const Node& grid, int width) const {
  std::vector<int> columns = grid.columns;
  std::set<std::size_t> stretching;
  for (std::size_t i = 0; i < grid.children.size(); ++i)
    if (grid.children[i].box->stretch_width) stretching.insert(i % columns.size());
  for (int left_over = width - grid.size.width; left_over > 0 && !stretching.empty(); --left_over)
    ++columns[*std::min_element(stretching.begin(), stretching.end(),
                                [&](auto one, auto other) { return columns[one] < columns[other]; })];
  return columns;
}

void LayoutEngine::PlaceGrid(const Node& node, Rectangle area, std::vector<Placement>& placed) const {
  const std::vector<int> columns = StretchedColumns(node, area.width);
  const std::vector<int> heights = RowHeights(node);
  int top = area.top;
  for (std::size_t i = 0; i < node.children.size(); ++i) {
    const std::size_t column = i % columns.size(), row = i / columns.size();
    if (column == 0 && row > 0) top += heights[row - 1] + GridGap(node);
    const int left = ColumnLeft(node, columns, node.box->FirstColumn(i));
    const int right = ColumnLeft(node, columns, column) + columns[column];
    const Node& child = node.children[i];
    Place(child, InCell(*child.box, child.size, {area.left + left, top, right - left, heights[row]}), placed);
  }
}

}  // namespace ui
