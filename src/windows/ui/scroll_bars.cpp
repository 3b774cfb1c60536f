#include "windows/ui/scroll_bars.h"

#include <algorithm>

#include "windows/ui/dpi.h"

namespace windows {

void ScrollBars::Fit(HWND window, ui::Extent content, ui::Extent room, int line) {
  line_ = line;
  const int bar_width = SystemMetric(SM_CXVSCROLL, window), bar_height = SystemMetric(SM_CYHSCROLL, window);
  bool vertical = room.height < content.height;
  const bool horizontal = room.width - (vertical ? bar_width : 0) < content.width;
  vertical = vertical || room.height - (horizontal ? bar_height : 0) < content.height;
  Show(window, SB_HORZ, content.width, horizontal ? room.width - (vertical ? bar_width : 0) : content.width);
  Show(window, SB_VERT, content.height,
       vertical ? room.height - (horizontal ? bar_height : 0) : content.height);
}

void ScrollBars::Show(HWND window, int bar, int content, int page) {
  Axis& axis = axes_[static_cast<std::size_t>(bar)];
  axis.content = content;
  axis.page = std::max(1, page);
  axis.position = std::clamp(axis.position, 0, std::max(0, content - axis.page));
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = std::max(0, content - 1);
  info.nPage = static_cast<UINT>(axis.page);
  info.nPos = axis.position;
  SetScrollInfo(window, bar, &info, TRUE);  // a page as long as the content hides the bar
}

bool ScrollBars::MoveTo(HWND window, int bar, int position) {
  Axis& axis = axes_[static_cast<std::size_t>(bar)];
  position = std::clamp(position, 0, std::max(0, axis.content - axis.page));
  if (position == axis.position) return false;
  axis.position = position;
  SetScrollPos(window, bar, position, TRUE);
  return true;
}

bool ScrollBars::Request(HWND window, int bar, WORD request) {
  const Axis& axis = axes_[static_cast<std::size_t>(bar)];
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  switch (request) {
    case SB_LINEUP:
      return MoveTo(window, bar, axis.position - line_);
    case SB_LINEDOWN:
      return MoveTo(window, bar, axis.position + line_);
    case SB_PAGEUP:
      return MoveTo(window, bar, axis.position - axis.page);
    case SB_PAGEDOWN:
      return MoveTo(window, bar, axis.position + axis.page);
    case SB_TOP:
      return MoveTo(window, bar, 0);
    case SB_BOTTOM:
      return MoveTo(window, bar, axis.content);
    case SB_THUMBTRACK:
      return GetScrollInfo(window, bar, &info) && MoveTo(window, bar, info.nTrackPos);
    default:
      return false;
  }
}

bool ScrollBars::Turn(HWND window, int wheel_delta) {
  constexpr int kLinesPerNotch = 3;
  return MoveTo(window, SB_VERT,
                axes_[SB_VERT].position - MulDiv(wheel_delta, kLinesPerNotch * line_, WHEEL_DELTA));
}

bool ScrollBars::RevealSpan(HWND window, int bar, int from, int to) {
  const Axis& axis = axes_[static_cast<std::size_t>(bar)];
  if (axis.page >= axis.content) return false;
  if (from < 0) return MoveTo(window, bar, axis.position + from);
  // Of what is longer than the window its beginning.
  return to > axis.page && MoveTo(window, bar, axis.position + std::min(from, to - axis.page));
}

bool ScrollBars::Reveal(HWND window, const ui::Rectangle& place) {
  const bool across = RevealSpan(window, SB_HORZ, place.left - line_, place.right() + line_);
  const bool down = RevealSpan(window, SB_VERT, place.top - line_, place.bottom() + line_);
  return across || down;
}

}  // namespace windows
