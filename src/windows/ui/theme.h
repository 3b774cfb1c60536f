#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <string>
#include <type_traits>

#include "ui/control.h"
#include "ui/layout_engine.h"

namespace windows {

struct GdiDelete {
  void operator()(HGDIOBJ object) const noexcept { DeleteObject(object); }
};
struct DcDelete {
  void operator()(HDC dc) const noexcept { DeleteDC(dc); }
};
struct IconDelete {
  void operator()(HICON icon) const noexcept { DestroyIcon(icon); }
};

struct ImagesDelete {
  void operator()(HIMAGELIST images) const noexcept { ImageList_Destroy(images); }
};

using OwnedFont = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiDelete>;
using OwnedBrush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, GdiDelete>;
using OwnedPen = std::unique_ptr<std::remove_pointer_t<HPEN>, GdiDelete>;
using OwnedBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, GdiDelete>;
using OwnedDc = std::unique_ptr<std::remove_pointer_t<HDC>, DcDelete>;
using OwnedIcon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDelete>;
using OwnedImages = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, ImagesDelete>;

/// Puts an object into a device context for a while.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object) : dc_(dc), former_(SelectObject(dc, object)) {}
  ~Selected() { SelectObject(dc_, former_); }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC dc_;
  HGDIOBJ former_;
};

/// Fonts and measures of windows at one resolution.
class Theme {
 public:
  /// Dots per inch; 96 is a scale of 100 %.
  Theme(int dpi, const LOGFONTW& font);

  int dpi() const { return dpi_; }
  bool IsIn(const LOGFONTW& font) const;
  /// A length that is given for 96 dots per inch.
  int Scaled(int pixels) const { return MulDiv(pixels, dpi_, 96); }

  enum class Weight { Normal, Bold };
  HFONT Font(Weight weight = Weight::Normal) const;
  int TextHeight() const { return text_height_; }
  int DigitWidth() const { return digit_width_; }
  /// The size of a text of one or more lines; with `caption` a "&" marks the accelerator and takes no room.
  ui::Extent TextSize(const std::wstring& text, Weight weight = Weight::Normal, bool caption = false) const;
  /// The size of a text that is broken between words to be no wider than this, in pixels.
  ui::Extent WrappedSize(const std::wstring& text, Weight weight, int width, bool caption = false) const;
  /// The text, or as much of its beginning and its end as fits into this width with an ellipsis between them:
  /// the end of a path distinguishes rooms.
  std::wstring Shortened(const std::wstring& text, int width) const;
  /// The same for a text that is broken between words, in this room.
  std::wstring ShortenedTo(const std::wstring& text, Weight weight, ui::Extent room) const;
  /// The height of text fields and lists.
  int FieldHeight() const { return text_height_ + Scaled(8); }

 private:
  HDC Measuring(Weight weight) const;

  int dpi_;
  LOGFONTW font_;
  OwnedFont normal_;
  OwnedFont bold_;
  // A text measures as on the screen. Each has its font for good: to select one can cost more than to
  // measure.
  OwnedDc normal_text_;
  OwnedDc bold_text_;
  int text_height_ = 0;
  int digit_width_ = 0;
};

/// The system's font for what programs tell, at a resolution.
LOGFONTW MessageFont(int dpi);

COLORREF ToColorRef(ui::Color color);
/// The system colour of text on one of its backgrounds: schemes change both together.
int TextOn(int background);
/// A quiet colour on a system colour: so much of its text's, in hundredths. With high contrast all of it.
COLORREF Quiet(int background, int percent);

/// Resolutions, in dots per inch, and what the system itself draws at them. A system that knows no other
/// gives all windows the resolution of the process.

/// That of the process, which stays as it was at its start.
int SystemDpi();
/// That of the screen around a window.
int DpiOf(HWND window);
/// As GetSystemMetrics, for what the system draws in this window.
int SystemMetric(int metric, HWND window);
/// The width of both edges of a window, and the height, without scroll bars, whatever it has now.
ui::Extent FrameOf(HWND window);
/// The part of a window's screen that windows may cover.
ui::Extent WorkAreaAround(HWND window);

}  // namespace windows
