#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

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

using OwnedFont = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiDelete>;
using OwnedBrush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, GdiDelete>;
using OwnedPen = std::unique_ptr<std::remove_pointer_t<HPEN>, GdiDelete>;
using OwnedBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, GdiDelete>;
using OwnedDc = std::unique_ptr<std::remove_pointer_t<HDC>, DcDelete>;
using OwnedIcon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDelete>;

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

}  // namespace windows
