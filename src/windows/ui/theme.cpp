#include "windows/ui/theme.h"

#include <cstring>

namespace windows {
namespace {

OwnedDc MeasuringDc(HFONT font) {
  OwnedDc dc(CreateCompatibleDC(nullptr));
  SelectObject(dc.get(), font);
  return dc;
}

/// Removes as few characters as possible from the middle, so that the text fits.
template <class Fits>
std::wstring WithoutMiddle(const std::wstring& text, Fits fits) {
  if (fits(text)) return text;
  const auto keep = [&](std::size_t kept) {
    std::size_t head = kept / 2, tail = text.size() - (kept - head);
    if (head > 0 && IS_HIGH_SURROGATE(text[head - 1])) --head;
    if (tail < text.size() && IS_LOW_SURROGATE(text[tail])) ++tail;
    return text.substr(0, head) + L"\x2026" + text.substr(tail);
  };
  std::size_t fitting = 0, too_many = text.size();
  while (too_many - fitting > 1) {
    const std::size_t middle = (fitting + too_many) / 2;
    (fits(keep(middle)) ? fitting : too_many) = middle;
  }
  return keep(fitting);
}

// Since Windows 10, version 1607.
using GetWindowDpi = UINT(WINAPI*)(HWND);
using GetMetricAt = int(WINAPI*)(int, UINT);
using AdjustAt = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);

template <class Function>
Function Find(const char* name) {
  const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32"), name);
  return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

ui::Extent SizeOf(const RECT& area) {
  return {static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top)};
}

}  // namespace

Theme::Theme(int dpi, const LOGFONTW& font) : dpi_(dpi), font_(font) {
  normal_.reset(CreateFontIndirectW(&font));
  LOGFONTW bold = font;
  bold.lfWeight = FW_BOLD;
  bold_.reset(CreateFontIndirectW(&bold));
  normal_text_ = MeasuringDc(normal_.get());
  bold_text_ = MeasuringDc(bold_.get());
  TEXTMETRICW metrics{};
  GetTextMetricsW(normal_text_.get(), &metrics);
  text_height_ = metrics.tmHeight;
  SIZE digits{};
  GetTextExtentPoint32W(normal_text_.get(), L"0123456789", 10, &digits);
  digit_width_ = (digits.cx + 9) / 10;
}

bool Theme::IsIn(const LOGFONTW& font) const { return std::memcmp(&font, &font_, sizeof font) == 0; }

HFONT Theme::Font(Weight weight) const { return weight == Weight::Bold ? bold_.get() : normal_.get(); }

HDC Theme::Measuring(Weight weight) const {
  return weight == Weight::Bold ? bold_text_.get() : normal_text_.get();
}

ui::Extent Theme::TextSize(const std::wstring& text, Weight weight, bool caption) const {
  RECT box{};
  DrawTextW(Measuring(weight), text.c_str(), static_cast<int>(text.size()), &box,
            DT_CALCRECT | DT_LEFT | DT_NOCLIP | (caption ? 0u : static_cast<UINT>(DT_NOPREFIX)));
  return {static_cast<int>(box.right), text.empty() ? text_height_ : static_cast<int>(box.bottom)};
}

ui::Extent Theme::WrappedSize(const std::wstring& text, Weight weight, int width, bool caption) const {
  RECT box{0, 0, width, 0};
  DrawTextW(Measuring(weight), text.c_str(), static_cast<int>(text.size()), &box,
            DT_CALCRECT | DT_LEFT | DT_WORDBREAK | (caption ? 0u : static_cast<UINT>(DT_NOPREFIX)));
  return {static_cast<int>(box.right), static_cast<int>(box.bottom)};
}

std::wstring Theme::Shortened(const std::wstring& text, int width) const {
  return WithoutMiddle(text, [&](const std::wstring& left) { return TextSize(left).width <= width; });
}

std::wstring Theme::ShortenedTo(const std::wstring& text, Weight weight, ui::Extent room) const {
  return WithoutMiddle(text, [&](const std::wstring& left) {
    const ui::Extent size = WrappedSize(left, weight, room.width);
    return size.width <= room.width && size.height <= room.height;
  });
}

LOGFONTW MessageFont(int dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
  LOGFONTW font = metrics.lfMessageFont;
  font.lfHeight = MulDiv(font.lfHeight, dpi, SystemDpi());
  return font;
}

COLORREF ToColorRef(ui::Color color) {
  const auto value = static_cast<std::uint32_t>(color);
  constexpr std::uint32_t kSystemColor = 0x80000000u;
  return value & kSystemColor ? GetSysColor(static_cast<int>(value & 0xFFu)) : value & 0x00FFFFFFu;
}

int TextOn(int background) { return background == COLOR_WINDOW ? COLOR_WINDOWTEXT : COLOR_BTNTEXT; }

COLORREF Quiet(int background, int percent) {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof contrast;
  SystemParametersInfoW(SPI_GETHIGHCONTRAST, contrast.cbSize, &contrast, 0);
  if (contrast.dwFlags & HCF_HIGHCONTRASTON) percent = 100;
  const COLORREF one = GetSysColor(background), other = GetSysColor(TextOn(background));
  const auto mix = [&](BYTE a, BYTE b) { return static_cast<BYTE>(a + (b - a) * percent / 100); };
  return RGB(mix(GetRValue(one), GetRValue(other)), mix(GetGValue(one), GetGValue(other)),
             mix(GetBValue(one), GetBValue(other)));
}

int SystemDpi() {
  const OwnedDc screen(CreateCompatibleDC(nullptr));
  const int dpi = GetDeviceCaps(screen.get(), LOGPIXELSY);
  return dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI;
}

int DpiOf(HWND window) {
  static const auto get = Find<GetWindowDpi>("GetDpiForWindow");
  const UINT dpi = get ? get(window) : 0;
  return dpi > 0 ? static_cast<int>(dpi) : SystemDpi();
}

int SystemMetric(int metric, HWND window) {
  static const auto get = Find<GetMetricAt>("GetSystemMetricsForDpi");
  return get ? get(metric, static_cast<UINT>(DpiOf(window))) : GetSystemMetrics(metric);
}

ui::Extent FrameOf(HWND window) {
  static const auto adjust = Find<AdjustAt>("AdjustWindowRectExForDpi");
  const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
  const auto extended = static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE));
  RECT frame{};
  if (adjust)
    adjust(&frame, style, FALSE, extended, static_cast<UINT>(DpiOf(window)));
  else
    AdjustWindowRectEx(&frame, style, FALSE, extended);
  return SizeOf(frame);
}

ui::Extent WorkAreaAround(HWND window) {
  MONITORINFO screen{};
  screen.cbSize = sizeof screen;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
  return SizeOf(screen.rcWork);
}

}  // namespace windows
