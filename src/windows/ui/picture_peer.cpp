#include "windows/ui/picture_peer.h"

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "windows/ui/peers.h"

namespace windows {
namespace {

// Shapes are predicates on the unit square, with the origin at the top left.
using Shape = bool (*)(double x, double y);
struct Layer {
  std::uint32_t color;  // 0xRRGGBB
  Shape shape;
};

bool InDisc(double x, double y, double cx, double cy, double radius) {
  return std::hypot(x - cx, y - cy) <= radius;
}

/// A stroke with round ends from (ax, ay) to (bx, by).
bool OnStroke(double x, double y, double ax, double ay, double bx, double by, double width) {
  const double dx = bx - ax, dy = by - ay;
  const double along = std::clamp(((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
  return std::hypot(x - ax - along * dx, y - ay - along * dy) <= width / 2;
}

bool Disc(double x, double y) { return InDisc(x, y, 0.5, 0.5, 0.48); }

bool QuestionMark(double x, double y) {
  // Three quarters of a ring, open at the lower left, a short stem, and the dot.
  const double dx = x - 0.5, dy = y - 0.385, distance = std::hypot(dx, dy);
  const bool ring = std::abs(distance - 0.13) <= 0.05 && !(dx < 0.0 && dy > 0.0);
  return ring || InDisc(x, y, 0.37, 0.385, 0.05) || OnStroke(x, y, 0.5, 0.515, 0.5, 0.585, 0.1) ||
         InDisc(x, y, 0.5, 0.735, 0.062);
}

/// In sixteenths, so that the edges are on whole pixels at the usual resolution.
bool InBox(double x, double y, double left, double top, double right, double bottom) {
  return 16 * x >= left && 16 * x <= right && 16 * y >= top && 16 * y <= bottom;
}
bool Sheet(double x, double y) { return InBox(x, y, 2, 0, 14, 15); }
bool Paper(double x, double y) { return InBox(x, y, 3, 1, 13, 14); }
bool Lines(double x, double y) {
  return InBox(x, y, 8, 3, 12, 4) || InBox(x, y, 8, 7, 12, 8) || InBox(x, y, 8, 11, 12, 12);
}
bool Bullet(double x, double y, double line) { return InDisc(16 * x, 16 * y, 5.5, line, 1.4); }
bool GreenBullets(double x, double y) { return Bullet(x, y, 3.5) || Bullet(x, y, 7.5); }
bool RedBullet(double x, double y) { return Bullet(x, y, 11.5); }

bool Mark(double x, double y) { return InDisc(x, y, 0.5, 0.5, 0.44); }
bool Tick(double x, double y) {
  return OnStroke(x, y, 0.3, 0.52, 0.44, 0.66, 0.11) || OnStroke(x, y, 0.44, 0.66, 0.7, 0.36, 0.11);
}
bool Cross(double x, double y) {
  return OnStroke(x, y, 0.35, 0.35, 0.65, 0.65, 0.11) || OnStroke(x, y, 0.35, 0.65, 0.65, 0.35, 0.11);
}

bool Rim(double x, double y) { return InDisc(x, y, 0.5, 0.5, 0.5); }
bool Dot(double x, double y) { return InDisc(x, y, 0.5, 0.5, 0.38); }

/// A folder with a sheet in it.
bool FolderBack(double x, double y) { return InBox(x, y, 1, 2, 7, 5) || InBox(x, y, 1, 4, 15, 14); }
bool FolderSheet(double x, double y) { return InBox(x, y, 3, 3, 13, 8); }
bool FolderFront(double x, double y) { return InBox(x, y, 1, 7, 15, 14); }

constexpr std::uint32_t kBlue = 0x1F6FB8, kGreen = 0x2E8B47, kRed = 0xC8372D, kGrey = 0x5A6470,
                        kWhite = 0xFFFFFF, kOchre = 0xB8862B, kYellow = 0xE8B84A;
constexpr Layer kHelp[] = {{kBlue, Disc}, {kWhite, QuestionMark}};
constexpr Layer kList[] = {
    {kGrey, Sheet}, {kWhite, Paper}, {kGrey, Lines}, {kGreen, GreenBullets}, {kRed, RedBullet}};
constexpr Layer kGreenMark[] = {{kGreen, Mark}, {kWhite, Tick}};
constexpr Layer kRedMark[] = {{kRed, Mark}, {kWhite, Cross}};
constexpr Layer kFolder[] = {{kOchre, FolderBack}, {kWhite, FolderSheet}, {kYellow, FolderFront}};
// The rim is visible on dark backgrounds.
constexpr Layer kEdit[] = {{kWhite, Rim}, {kRed, Dot}};

std::span<const Layer> LayersOf(Picture picture) {
  switch (picture) {
    case Picture::Help:
      return kHelp;
    case Picture::List:
      return kList;
    case Picture::GreenMark:
      return kGreenMark;
    case Picture::RedMark:
      return kRedMark;
    case Picture::Edit:
      return kEdit;
    case Picture::Folder:
      return kFolder;
  }
  return {};
}

/// The colour of one pixel, 0xAARRGGBB, averaged over samples.
std::uint32_t PixelAt(std::span<const Layer> layers, int column, int row, int size) {
  constexpr int kSamples = 6;
  int covered = 0, red = 0, green = 0, blue = 0;
  for (int sample = 0; sample < kSamples * kSamples; ++sample) {
    const int across = sample % kSamples, down = sample / kSamples;
    const double x = (column + (across + 0.5) / kSamples) / size;
    const double y = (row + (down + 0.5) / kSamples) / size;
    const auto top =
        std::find_if(layers.rbegin(), layers.rend(), [&](const Layer& layer) { return layer.shape(x, y); });
    if (top == layers.rend()) continue;
    ++covered;
    red += static_cast<int>(top->color >> 16 & 0xFF);
    green += static_cast<int>(top->color >> 8 & 0xFF);
    blue += static_cast<int>(top->color & 0xFF);
  }
  if (covered == 0) return 0;
  const auto channel = [&](int sum) { return static_cast<std::uint32_t>(sum / covered); };
  const auto alpha = static_cast<std::uint32_t>(covered * 255 / (kSamples * kSamples));
  return alpha << 24 | channel(red) << 16 | channel(green) << 8 | channel(blue);
}

/// Red, green and blue multiplied by opacity, and opacity; all from 0 to 255.
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

/// Calls `take` with each source index that this one of `count` equal parts touches, and the covered share.
template <class Take>
void ForEachIn(int part, int count, int range, Take take) {
  const double begin = static_cast<double>(part) * range / count;
  const double end = static_cast<double>(part + 1) * range / count;
  for (int index = static_cast<int>(begin); index < end; ++index)
    take(index, (std::min(end, index + 1.0) - std::max(begin, static_cast<double>(index))) * count / range);
}

/// The bitmap at another size, for AlphaBlend. Each pixel is the mean of the area it covers, so edges on
/// whole pixels stay sharp. Null if there is no such 32-bit bitmap.
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
  for (int row = 0; row < size.height; ++row)  // both start with the bottom row
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

/// A bitmap on the window's background, which is visible where the bitmap is transparent. Without the bitmap
/// it shows only the background.
class PicturePeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;
  ui::Extent PreferredSize() const override { return size_; }

  void Draw(const DRAWITEMSTRUCT& item) override {
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

 protected:
  void MakeWindow() override { Create(L"STATIC", L"", SS_OWNERDRAW); }

  void Measure() override {
    const auto& picture = static_cast<const ui::Picture&>(control());
    const auto pixels = [&](double twips) {
      return static_cast<int>(std::lround(twips * theme().dpi() / 1440));
    };
    size_ = {pixels(picture.width), pixels(picture.height)};
  }

  void Rescale() override {
    if (std::exchange(scaled_to_, size_) == size_) return;
    scaled_ =
        LoadScaled(host().ui_thread().instance(), static_cast<const ui::Picture&>(control()).resource, size_);
  }

 private:
  ui::Extent size_, scaled_to_;
  OwnedBitmap scaled_;
};

}  // namespace

OwnedIcon DrawPicture(Picture picture, int size) {
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, size, -size, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  const OwnedBitmap colors(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  // Rows of a mask are whole words; all zero shows the colours everywhere.
  const std::vector<BYTE> hidden(static_cast<std::size_t>((size + 15) / 16 * 2 * size));
  const OwnedBitmap mask(CreateBitmap(size, size, 1, 1, hidden.data()));
  if (!colors || !mask) return {};
  auto* pixel = static_cast<std::uint32_t*>(bits);
  for (int row = 0; row < size; ++row)
    for (int column = 0; column < size; ++column) *pixel++ = PixelAt(LayersOf(picture), column, row, size);
  ICONINFO icon{TRUE, 0, 0, mask.get(), colors.get()};
  return OwnedIcon(CreateIconIndirect(&icon));
}

OwnedImages DrawPictures(std::span<const Picture> pictures, int size) {
  OwnedImages images(
      ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, 0, static_cast<int>(pictures.size())));
  for (const Picture picture : pictures)
    ImageList_ReplaceIcon(images.get(), -1, DrawPicture(picture, size).get());
  return images;
}

std::unique_ptr<NativePeer> MakePicture(PeerHost& host, Surface& parent, ui::Control& control) {
  return std::make_unique<PicturePeer>(host, parent, control);
}

}  // namespace windows
