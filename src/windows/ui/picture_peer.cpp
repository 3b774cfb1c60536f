#include "windows/ui/picture_peer.h"

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace windows {
namespace {

/// Red, green and blue times opacity, and opacity; all from 0 to 255.
struct Color {
  double blue = 0, green = 0, red = 0, opacity = 0;

  void Add(std::uint32_t pixel, double part) {
    const double seen = part * (pixel >> 24);
    blue += (pixel & 0xFF) * seen / 255;
    green += (pixel >> 8 & 0xFF) * seen / 255;
    red += (pixel >> 16 & 0xFF) * seen / 255;
    opacity += seen;
  }
  std::uint32_t Pixel() const {
    const auto byte = [](double value) { return static_cast<std::uint32_t>(std::lround(value)); };
    return byte(opacity) << 24 | byte(red) << 16 | byte(green) << 8 | byte(blue);
  }
};

/// Calls with each source index that one of `count` equal parts of the range touches, and how much of it.
template <class Take>
void ForEachIn(int part, int count, int range, Take take) {
  const double begin = static_cast<double>(part) * range / count;
  const double end = static_cast<double>(part + 1) * range / count;
  for (int index = static_cast<int>(begin); index < end; ++index)
    take(index, (std::min(end, index + 1.0) - std::max(begin, static_cast<double>(index))) * count / range);
}

/// The bitmap at another size, for AlphaBlend. Every pixel is the mean of what it covers, so that edges which
/// fall on whole pixels stay sharp. Null where there is no such bitmap with 32 bits a pixel.
OwnedBitmap LoadScaled(HINSTANCE instance, int resource, ui::Extent size) {
  const OwnedBitmap source(static_cast<HBITMAP>(
      LoadImageW(instance, MAKEINTRESOURCEW(resource), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
  DIBSECTION from{};
  if (!source || !GetObjectW(source.get(), sizeof from, &from) || from.dsBm.bmBitsPixel != 32) return {};
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, size.width, size.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  OwnedBitmap scaled(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!scaled) return {};
  const auto* pixels = static_cast<const std::uint32_t*>(from.dsBm.bmBits);
  auto* pixel = static_cast<std::uint32_t*>(bits);
  for (int row = 0; row < size.height; ++row)  // both have their bottom row first
    for (int column = 0; column < size.width; ++column) {
      Color color;
      ForEachIn(row, size.height, from.dsBm.bmHeight, [&](int y, double height) {
        ForEachIn(column, size.width, from.dsBm.bmWidth,
                  [&](int x, double width) { color.Add(pixels[y * from.dsBm.bmWidth + x], height * width); });
      });
      *pixel++ = color.Pixel();
    }
  return scaled;
}

}  // namespace

void PicturePeer::MakeWindow() { Create(L"STATIC", L"", SS_OWNERDRAW); }

void PicturePeer::Measure() {
  const auto& picture = static_cast<const ui::Picture&>(control());
  const auto pixels = [&](double twips) {
    return static_cast<int>(std::lround(twips * theme().dpi() / 1440));
  };
  size_ = {pixels(picture.width), pixels(picture.height)};
}

void PicturePeer::Rescale() {
  if (std::exchange(scaled_to_, size_) == size_) return;
  scaled_ =
      LoadScaled(host().ui_thread().instance(), static_cast<const ui::Picture&>(control()).resource, size_);
}

ui::Extent PicturePeer::PreferredSize() const { return size_; }

void PicturePeer::Draw(const DRAWITEMSTRUCT& item) {
  FillRect(item.hDC, &item.rcItem, GetSysColorBrush(backdrop()));
  if (!scaled_) return;
  const HDC dc = CreateCompatibleDC(item.hDC);
  {
    const Selected in(dc, scaled_.get());
    AlphaBlend(item.hDC, 0, 0, size_.width, size_.height, dc, 0, 0, size_.width, size_.height,
               {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA});
  }
  DeleteDC(dc);
}

}  // namespace windows
