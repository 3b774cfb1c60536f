#include <windows.h>

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <cwchar>
#include <numeric>
#include <optional>
#include <vector>

#include "windows/com/wide_text.h"
#include "windows/ui/peers.h"
#include "windows/ui/theme.h"

namespace windows {
namespace {

/// In digits. A longer field caption takes two lines.
constexpr int kLongestLine = 24;

/// The answers of a control that paints itself completely; nothing for messages unrelated to painting.
template <class Paint>
std::optional<LRESULT> DrawnBy(Paint paint, HWND window, UINT message, WPARAM wparam) {
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT: {
      PAINTSTRUCT area;
      paint(BeginPaint(window, &area));
      EndPaint(window, &area);
      return 0;
    }
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    default:
      return std::nullopt;
  }
}

/// A caption, or a text from the network. The latter is painted here if it has room for several lines, so
/// that a long text keeps its end.
class LabelPeer final : public NativePeer {
 public:
  LabelPeer(PeerHost& host, Surface& parent, ui::Control& label)
      : NativePeer(host, parent, label), first_text_(ToWide(label.Text())) {}

  ui::Extent PreferredSize() const override {
    const std::wstring text = ToWide(label().Text());
    ui::Extent size = theme().TextSize(text, weight(), !label().shows_data);
    const bool caption = label().columns == 0 && !label().shows_data;
    if (caption && size.width > kLongestLine * theme().DigitWidth())
      size = theme().WrappedSize(text, weight(), size.width * 2 / 3, true);
    if (label().columns > 0) size.width = label().columns * theme().DigitWidth();
    // Texts from the device can have any length and must not make the window grow.
    if (label().shows_data && label().columns == 0) size.width = first_width_;
    if (label().lines > 1) size.height = label().lines * theme().TextHeight();
    return size;
  }

 protected:
  void MakeWindow() override {
    // A label that ends in an ellipsis has one line. SS_NOTIFY lets the mouse find it, for a tooltip.
    const bool data = (label().shows_data || label().columns > 0) && label().lines == 1;
    Create(L"STATIC", ToWide(label().Text()),
           static_cast<DWORD>(SS_LEFT | (data ? SS_ENDELLIPSIS : 0) |
                              (label().shows_data ? SS_NOPREFIX | SS_NOTIFY : 0)));
  }

  void Measure() override { first_width_ = theme().TextSize(first_text_, weight()).width; }
  /// Otherwise the system keeps the old pixels of a label that only grows.
  void OnPlaced() override { InvalidateRect(handle(), nullptr, TRUE); }

  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override {
    if (!DrawsItself()) return NativePeer::Handle(message, wparam, lparam);
    if (const auto drawn = DrawnBy([this](HDC dc) { Paint(dc); }, handle(), message, wparam)) return *drawn;
    if (message != WM_SETTEXT) return NativePeer::Handle(message, wparam, lparam);
    InvalidateRect(handle(), nullptr, FALSE);
    // The system's label would draw the text at once.
    return DefWindowProcW(handle(), message, wparam, lparam);
  }

 private:
  bool DrawsItself() const { return label().shows_data && label().lines > 1; }

  void Paint(HDC dc) {
    RECT area;
    GetClientRect(handle(), &area);
    FillRect(dc, &area, Colors(dc));
    const ui::Extent room{static_cast<int>(area.right), static_cast<int>(area.bottom)};
    const std::wstring text = theme().ShortenedTo(ToWide(label().Text()), weight(), room);
    const Selected font(dc, theme().Font(weight()));
    SetBkMode(dc, TRANSPARENT);
    // A single line is at the bottom, close to the next control.
    area.top = std::max(0L, area.bottom - theme().WrappedSize(text, weight(), room.width).height);
    DrawTextW(dc, text.c_str(), -1, &area, DT_WORDBREAK | DT_NOPREFIX);
  }

  const ui::Label& label() const { return static_cast<const ui::Label&>(control()); }

  Theme::Weight weight() const override {
    return label().weight == ui::Label::Weight::Heading ? Theme::Weight::Bold : Theme::Weight::Normal;
  }

  const std::wstring first_text_;
  int first_width_ = 0;
};

/// A frame: on a page a thin border with a bold caption; in another frame a caption and a line.
class FramePeer final : public NativePeer {
 public:
  FramePeer(PeerHost& host, Surface& parent, ui::Control& frame, bool nested)
      : NativePeer(host, parent, frame), nested_(nested) {}

  ui::Extent PreferredSize() const override {
    const int caption = theme().TextSize(ToWide(control().Text()), weight(), true).width;
    return {caption + theme().Scaled(32), theme().TextHeight() + theme().Scaled(16)};
  }

  ui::Insets Insets() const override {
    const int top = theme().TextHeight() + theme().Scaled(nested_ ? 5 : 7);
    if (nested_) return {0, top, 0, theme().Scaled(2)};
    return {theme().Scaled(12), top, theme().Scaled(12), theme().Scaled(12)};
  }

 protected:
  void MakeWindow() override { Create(L"BUTTON", ToWide(control().Text()), BS_GROUPBOX); }
  void OnPlaced() override { InvalidateRect(handle(), nullptr, FALSE); }

  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override {
    if (const auto drawn = DrawnBy([this](HDC dc) { Paint(dc); }, handle(), message, wparam)) return *drawn;
    if (message != WM_SIZE) return NativePeer::Handle(message, wparam, lparam);
    InvalidateRect(handle(), nullptr, FALSE);
    return 0;
  }

 private:
  Theme::Weight weight() const override { return nested_ ? Theme::Weight::Normal : Theme::Weight::Bold; }

  void Paint(HDC dc) const {
    RECT area;
    GetClientRect(handle(), &area);
    FillRect(dc, &area, GetSysColorBrush(backdrop()));
    PaintLine(dc, area);
    const std::wstring caption = ToWide(control().Text());
    if (caption.empty()) return;
    const ui::Extent text = theme().TextSize(caption, weight(), true);
    const int left = nested_ ? 0 : theme().Scaled(9), padding = nested_ ? 0 : theme().Scaled(4);
    RECT place{left, 0, left + text.width + 2 * padding + (nested_ ? theme().Scaled(6) : 0), text.height};
    FillRect(dc, &place, GetSysColorBrush(backdrop()));
    place.left += padding;
    const Selected font(dc, theme().Font(weight()));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, nested_ ? Quiet(backdrop(), 72) : TextColor(backdrop()));
    DrawTextW(dc, caption.c_str(), -1, &place, DT_SINGLELINE | DT_NOCLIP);
  }

  void PaintLine(HDC dc, const RECT& area) const {
    const OwnedPen pen(CreatePen(PS_SOLID, std::max(1, theme().dpi() / 96), Quiet(backdrop(), 22)));
    const Selected in_pen(dc, pen.get());
    const Selected in_brush(dc, GetStockObject(NULL_BRUSH));
    const int middle = theme().TextHeight() / 2;  // of the caption, even without one
    if (nested_) {
      MoveToEx(dc, area.left, middle, nullptr);
      LineTo(dc, area.right, middle);
    } else {
      RoundRect(dc, area.left, middle, area.right, area.bottom, theme().Scaled(6), theme().Scaled(6));
    }
  }

  const bool nested_;
};

class StatusBarPeer final : public NativePeer {
 public:
  StatusBarPeer(PeerHost& host, Surface& parent, ui::Control& bar, bool grip)
      : NativePeer(host, parent, bar), grip_(grip) {}

  ui::Extent PreferredSize() const override {
    return {theme().Scaled(120), theme().TextHeight() + theme().Scaled(9)};
  }

 protected:
  void MakeWindow() override {
    Create(STATUSCLASSNAMEW, L"",
           static_cast<DWORD>(CCS_NOPARENTALIGN | CCS_NORESIZE | (grip_ ? SBARS_SIZEGRIP : 0)));
  }

  void OnPlaced() override {
    const std::size_t count = bar().Panels().size();
    std::vector<int> widths(count, place().width / static_cast<int>(count));
    for (std::size_t panel = 0; panel < bar().columns.size(); ++panel)
      widths[panel] = bar().columns[panel] * theme().DigitWidth();
    // What is left goes to the panel that names no room.
    const int rest = place().width - std::accumulate(widths.begin(), widths.end(), 0);
    if (const auto open = std::ranges::find(widths, 0); open != widths.end()) *open = std::max(0, rest);
    std::vector<int> right_edges(count);
    std::partial_sum(widths.begin(), widths.end(), right_edges.begin());
    right_edges.back() = -1;
    Send(SB_SETPARTS, right_edges.size(), reinterpret_cast<LPARAM>(right_edges.data()));
    shown_.clear();  // texts sent before the parts were set are lost
    ShowTexts();
  }

  void Show(ui::Aspect aspect) override {
    if (aspect == ui::Aspect::Text)
      ShowTexts();
    else
      NativePeer::Show(aspect);
  }

  /// Programs that read the bar get the full texts.
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override {
    if ((message != SB_GETTEXTW && message != SB_GETTEXTLENGTHW) || wparam >= bar().Panels().size())
      return NativePeer::Handle(message, wparam, lparam);
    const std::wstring text = ToWide(bar().Panels()[wparam]);
    if (message == SB_GETTEXTW)
      std::wmemcpy(reinterpret_cast<wchar_t*>(lparam), text.c_str(), text.size() + 1);
    return static_cast<LRESULT>(text.size());
  }

 private:
  ui::StatusBar& bar() const { return static_cast<ui::StatusBar&>(control()); }

  /// Shortens texts that do not fit; the tooltip has the full texts.
  void ShowTexts() {
    const std::vector<std::string>& panels = bar().Panels();
    std::string cut;
    shown_.resize(panels.size());
    for (std::size_t part = 0; part < panels.size(); ++part) {
      std::wstring text = ToWide(panels[part]);
      const RECT room = RoomOf(part);
      const auto width = static_cast<int>(room.right - room.left);
      if (theme().TextSize(text).width > width) {
        text = theme().Shortened(text, width);
        cut += (cut.empty() ? "" : "\r\n") + panels[part];
      }
      if (text == shown_[part]) continue;
      shown_[part] = std::move(text);
      Send(SB_SETTEXTW, part, reinterpret_cast<LPARAM>(shown_[part].c_str()));
    }
    control().SetToolTip(cut);
  }

  /// The rectangle for the text of a part.
  RECT RoomOf(std::size_t part) const {
    RECT room{};
    Send(SB_GETRECT, part, reinterpret_cast<LPARAM>(&room));
    // The last part extends to the edge; its rectangle is correct only after the bar has moved.
    if (part + 1 == bar().Panels().size())
      room.right = place().width - (grip_ ? SystemMetric(SM_CXVSCROLL, handle()) : 0);
    InflateRect(&room, -theme().Scaled(3), -1);
    return room;
  }

  const bool grip_;
  std::vector<std::wstring> shown_;
};

/// A plain area, the parent of an animation.
class AnimationHostPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;
  // Slightly larger than the clip.
  ui::Extent PreferredSize() const override { return {theme().Scaled(320), theme().Scaled(80)}; }

 protected:
  void MakeWindow() override { Create(L"STATIC", L"", SS_LEFT); }

  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override {
    // The animation asks for the background behind its transparent parts.
    if (message == WM_CTLCOLORSTATIC) return reinterpret_cast<LRESULT>(Colors(reinterpret_cast<HDC>(wparam)));
    if (message == WM_SIZE)
      if (const HWND animation = GetWindow(handle(), GW_CHILD))
        MoveWindow(animation, 0, 0, GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam), TRUE);
    return NativePeer::Handle(message, wparam, lparam);
  }
};

}  // namespace

std::unique_ptr<NativePeer> MakeLabel(PeerHost& host, Surface& parent, ui::Control& control) {
  return std::make_unique<LabelPeer>(host, parent, control);
}

std::unique_ptr<NativePeer> MakeFrame(PeerHost& host, Surface& parent, ui::Control& control, bool nested) {
  return std::make_unique<FramePeer>(host, parent, control, nested);
}

std::unique_ptr<NativePeer> MakeStatusBar(PeerHost& host, Surface& parent, ui::Control& control, bool grip) {
  return std::make_unique<StatusBarPeer>(host, parent, control, grip);
}

std::unique_ptr<NativePeer> MakeAnimationHost(PeerHost& host, Surface& parent, ui::Control& control) {
  return std::make_unique<AnimationHostPeer>(host, parent, control);
}

}  // namespace windows
