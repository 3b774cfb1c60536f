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

/// Selects an object into a device context while this exists.
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
  /// Converts a length at 96 dots per inch.
  int Scaled(int pixels) const { return MulDiv(pixels, dpi_, 96); }

  enum class Weight { Normal, Bold };
  HFONT Font(Weight weight = Weight::Normal) const;
  int TextHeight() const { return text_height_; }
  int DigitWidth() const { return digit_width_; }
  /// The size of a text of one or more lines. In a caption, "&" marks the accelerator and takes no room.
  ui::Extent TextSize(const std::wstring& text, Weight weight = Weight::Normal, bool caption = false) const;
  /// The size of a text that wraps between words at this width in pixels.
  ui::Extent WrappedSize(const std::wstring& text, Weight weight, int width, bool caption = false) const;
  /// The text, shortened in the middle with an ellipsis if it is wider than this: the end of a path
  /// distinguishes rooms.
  std::wstring Shortened(const std::wstring& text, int width) const;
  /// The same for a text that wraps between words, for this size.
  std::wstring ShortenedTo(const std::wstring& text, Weight weight, ui::Extent room) const;
  /// The height of text fields and lists.
  int FieldHeight() const { return text_height_ + Scaled(8); }

 private:
  HDC Measuring(Weight weight) const;

  int dpi_;
  LOGFONTW font_;
  OwnedFont normal_;
  OwnedFont bold_;
  // Each context keeps its font, because selecting a font can cost more than measuring a text.
  OwnedDc normal_text_;
  OwnedDc bold_text_;
  int text_height_ = 0;
  int digit_width_ = 0;
};

/// The system's font for messages at a resolution.
LOGFONTW MessageFont(int dpi);

COLORREF ToColorRef(ui::Color color);
/// The system's text colour for one of its backgrounds: colour schemes change both together.
int TextOn(int background);
/// A muted colour: this percentage of the text colour, the rest background. In high contrast all text colour.
COLORREF Quiet(int background, int percent);

/// Resolutions in dots per inch, and the sizes that the system uses at them. A system without a resolution
/// per screen reports that of the process.

/// The process's resolution, fixed at its start.
int SystemDpi();
/// The resolution of the screen around a window.
int DpiOf(HWND window);
/// GetSystemMetrics for the resolution of this window.
int SystemMetric(int metric, HWND window);
/// The total width and height of a window's edges without scroll bars, even if it has scroll bars now.
ui::Extent FrameOf(HWND window);
/// The work area of the screen around a window.
ui::Extent WorkAreaAround(HWND window);

}  // namespace windows
