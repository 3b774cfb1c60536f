#include <windows.h>

#include <imm.h>

#include <array>
#include <utility>
#include <vector>

#include "windows/com/wide_text.h"
#include "windows/ui/peers.h"
#include "windows/ui/shell_services.h"
#include "windows/ui/surface.h"
#include "windows/ui/theme.h"

namespace windows {
namespace {

constexpr WPARAM kSelectAll = 1;  // the character of Ctrl+A
constexpr WPARAM kFirstPrintable = 0x20;

/// A one-line EDIT. All text input (typing, pasting, the context menu) passes the field's key filter, and
/// every change is reported to the field.
class TextFieldPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;

  ui::Extent PreferredSize() const override {
    const int digits = field().columns > 0 ? field().columns : 8;
    return {digits * theme().DigitWidth() + theme().Scaled(14), theme().FieldHeight()};
  }

  void Command(WORD notification) override {
    if (notification != EN_CHANGE || telling_) return;
    // Some systems report a change when all text is selected.
    const std::wstring text = WindowText();
    if (text != ToWide(field().Text())) field().UserChangesText(ToUtf8(text));
  }

  HBRUSH Colors(HDC dc) override {
    SetTextColor(dc, TextColor(Closed() ? COLOR_3DFACE : COLOR_WINDOW));
    SetBkColor(dc, BackColor());
    SetDCBrushColor(dc, BackColor());
    return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
  }

  void Prepare() override {
    if (!field().Locked()) Send(EM_SETSEL, 0, -1);
  }

 protected:
  void MakeWindow() override {
    Create(L"EDIT", ToWide(field().Text()), ES_LEFT | ES_AUTOHSCROLL | (field().Locked() ? ES_READONLY : 0),
           WS_EX_CLIENTEDGE);
    // Fields accept only numbers, which an input method would hold back.
    ImmAssociateContext(handle(), nullptr);
    if (field().most_typed > 0) Send(EM_SETLIMITTEXT, static_cast<WPARAM>(field().most_typed));
    // Measure again, as the first measurement did not ask this procedure for the place of the line.
    SetWindowPos(handle(), nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  }

  void Show(ui::Aspect aspect) override {
    if (aspect == ui::Aspect::Text) return CatchUpWhenSeen();
    if (aspect == ui::Aspect::Locked) Send(EM_SETREADONLY, field().Locked());
    NativePeer::Show(aspect);
    RedrawWindow(handle(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_ERASE);
  }

  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override {
    switch (message) {
      case WM_SYSKEYDOWN:  // with Alt
      case WM_KEYDOWN:
        if (field().Locked()) break;
        if (field().on_key_down && field().on_key_down(static_cast<int>(wparam), HeldKeys()))
          return TakenKey(message, wparam, lparam);
        if (!alive()) return 0;
        // Not every system turns this into WM_PASTE.
        if (message == WM_KEYDOWN && wparam == VK_INSERT && (HeldKeys() & ui::kShift)) return Paste(), 0;
        break;
      case WM_CHAR:
        return Character(wparam, lparam);
      case WM_NCCALCSIZE: {
        const LRESULT result = Default(message, wparam, lparam);
        CentreLine(wparam ? reinterpret_cast<NCCALCSIZE_PARAMS*>(lparam)->rgrc[0]
                          : *reinterpret_cast<RECT*>(lparam));
        return result;
      }
      case WM_NCPAINT: {
        const LRESULT result = Default(message, wparam, lparam);
        PaintAboveAndBelow();
        return result;
      }
      case WM_PASTE:
        Paste();
        return 0;
      case WM_CONTEXTMENU:
        OfferMenu(lparam);
        return 0;
      case WM_LBUTTONDOWN:
        select_on_release_ = GetFocus() != handle();
        break;
      case WM_LBUTTONUP: {
        const LRESULT result = Default(message, wparam, lparam);
        const auto [start, end] = Selection();
        if (alive() && select_on_release_ && start == end) Prepare();
        select_on_release_ = false;
        return result;
      }
      default:
        break;
    }
    return NativePeer::Handle(message, wparam, lparam);
  }

  void CatchUp() override {
    telling_ = true;
    NativePeer::Show(ui::Aspect::Text);
    telling_ = false;
  }

 private:
  ui::TextField& field() const { return static_cast<ui::TextField&>(control()); }

  LRESULT Character(WPARAM character, LPARAM lparam) {
    if (character == kSelectAll) {
      Send(EM_SETSEL, 0, -1);
      return 0;
    }
    // The other control characters are commands such as copy and undo; only Backspace changes text.
    const bool enters = !field().Locked() && (character >= kFirstPrintable || character == VK_BACK);
    if (enters && field().on_key_press && !field().on_key_press(static_cast<char32_t>(character))) return 0;
    return alive() ? NativePeer::Handle(WM_CHAR, character, lparam) : 0;
  }

  void Paste() {
    if (field().Locked()) return;
    std::wstring accepted;
    for (const wchar_t character : ClipboardText(handle())) {
      if (character < kFirstPrintable) continue;
      if (!field().on_key_press || field().on_key_press(character)) accepted += character;
      if (!alive()) return;
    }
    if (!accepted.empty()) Send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(accepted.c_str()));
  }

  /// The system's own menu cannot be extended.
  void OfferMenu(LPARAM where) {
    const auto [start, end] = Selection();
    const bool editable = !field().Locked(), selected = start != end;
    const auto length = static_cast<DWORD>(GetWindowTextLengthW(handle()));
    const bool has_text = IsClipboardFormatAvailable(CF_UNICODETEXT) != 0;
    std::vector<MenuItem> items = {{L"&Undo\tCtrl+Z", editable && Send(EM_CANUNDO)},
                                   {},
                                   {L"Cu&t\tCtrl+X", editable && selected},
                                   {L"&Copy\tCtrl+C", selected},
                                   {L"&Paste\tCtrl+V", editable && has_text},
                                   {L"&Delete", editable && selected},
                                   {},
                                   {L"Select &All\tCtrl+A", end - start < length}};
    constexpr std::array<UINT, 8> kMessages = {WM_UNDO, 0, WM_CUT, WM_COPY, WM_PASTE, WM_CLEAR, 0, EM_SETSEL};
    if (field().on_put_back) items.insert(items.end(), {{}, {kPutBack, field().CanBePutBack()}});
    const auto chosen = ChooseFromMenu(handle(), where, items);
    // The field may have been locked while the menu was open.
    if (!chosen || !alive() || editable == field().Locked()) return;
    if (*chosen < kMessages.size()) return static_cast<void>(Send(kMessages[*chosen], 0, -1));
    field().UserPutsBack();
    if (alive()) Prepare();
  }

  std::pair<DWORD, DWORD> Selection() const {
    DWORD start = 0, end = 0;
    Send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return {start, end};
  }

  /// The system puts the line at the top of the field. This centres it, level with the label.
  void CentreLine(RECT& client) const {
    const LONG line = theme().TextHeight() + 2, spare = client.bottom - client.top - line;
    if (spare <= 0) return;
    client.top += spare / 2;
    client.bottom = client.top + line;
  }

  void PaintAboveAndBelow() const {
    RECT window, client;
    GetWindowRect(handle(), &window);
    GetClientRect(handle(), &client);
    POINT origin{0, 0};
    ClientToScreen(handle(), &origin);
    OffsetRect(&client, static_cast<int>(origin.x - window.left), static_cast<int>(origin.y - window.top));
    const LONG edge = SystemMetric(SM_CYEDGE, handle());
    const RECT above{client.left, edge, client.right, client.top};
    const RECT below{client.left, client.bottom, client.right, window.bottom - window.top - edge};
    const HDC dc = GetWindowDC(handle());
    SetDCBrushColor(dc, BackColor());
    for (const RECT& band : {above, below})
      FillRect(dc, &band, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    ReleaseDC(handle(), dc);
  }

  bool Closed() const { return field().Locked() || !field().Enabled(); }

  COLORREF BackColor() const { return ToColorRef(Closed() ? ui::Color::ButtonFace : field().BackColor()); }

  bool telling_ = false;  // the program changes the text
  bool select_on_release_ = false;
};

}  // namespace

std::unique_ptr<NativePeer> MakeTextField(PeerHost& host, Surface& parent, ui::Control& control) {
  return std::make_unique<TextFieldPeer>(host, parent, control);
}

}  // namespace windows
