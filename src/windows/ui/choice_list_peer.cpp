#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "windows/com/wide_text.h"
#include "windows/ui/peers.h"
#include "windows/ui/shell_services.h"
#include "windows/ui/surface.h"
#include "windows/ui/theme.h"

namespace windows {
namespace {

constexpr int kMostVisibleItems = 12;

/// A drop-down list, drawn by the program so that its text has the field's colour in every style of the
/// system. A text that is not an item becomes an extra last item until another text is set.
class ChoiceListPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;

  ui::Extent PreferredSize() const override {
    int widest = 4 * theme().DigitWidth();
    for (const std::string& item : list().Items())
      widest = std::max(widest, theme().TextSize(ToWide(item)).width);
    return {widest + SystemMetric(SM_CXVSCROLL, parent().handle()) + theme().Scaled(16),
            theme().FieldHeight()};
  }

  void Command(WORD notification) override {
    if (notification == CBN_DROPDOWN && list().on_drop_down) list().on_drop_down();
    // The user may still leave an open list without a choice.
    if (notification == CBN_CLOSEUP || (notification == CBN_SELCHANGE && !DroppedDown())) TellChoice();
  }

  void Draw(const DRAWITEMSTRUCT& item) override {
    const bool closed_field = (item.itemState & ODS_COMBOBOXEDIT) != 0;
    const bool highlighted = !closed_field && (item.itemState & ODS_SELECTED);
    const bool disabled = (item.itemState & ODS_DISABLED) != 0 || list().Locked();
    COLORREF text =
        closed_field ? TextColor(disabled ? COLOR_3DFACE : COLOR_WINDOW) : GetSysColor(COLOR_WINDOWTEXT);
    if (highlighted) text = GetSysColor(COLOR_HIGHLIGHTTEXT);
    if (item.itemState & ODS_DISABLED) text = GetSysColor(COLOR_GRAYTEXT);
    const COLORREF field_back = ToColorRef(disabled ? ui::Color::ButtonFace : list().BackColor());
    const COLORREF back = highlighted    ? GetSysColor(COLOR_HIGHLIGHT)
                          : closed_field ? field_back
                                         : GetSysColor(COLOR_WINDOW);
    SetDCBrushColor(item.hDC, back);
    FillRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    if (item.itemID != static_cast<UINT>(-1)) {
      SetTextColor(item.hDC, text);
      SetBkMode(item.hDC, TRANSPARENT);
      RECT place = item.rcItem;
      place.left += theme().Scaled(3);
      DrawTextW(item.hDC, ItemText(item.itemID).c_str(), -1, &place,
                DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
    if (closed_field && (item.itemState & ODS_FOCUS) && !(item.itemState & ODS_NOFOCUSRECT))
      DrawFocusRect(item.hDC, &item.rcItem);
  }

  HBRUSH Colors(HDC dc) override {
    const COLORREF back = ToColorRef(list().BackColor());
    SetTextColor(dc, TextColor(COLOR_WINDOW));
    SetBkColor(dc, back);
    SetDCBrushColor(dc, back);
    return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
  }

 protected:
  void MakeWindow() override {
    Create(L"COMBOBOX", L"", CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | WS_VSCROLL);
    FillItems();
  }

  void OnPlaced() override {
    Send(CB_SETITEMHEIGHT, 0, theme().TextHeight() + theme().Scaled(4));
    // The border adds to the height; measure it, as the system does not report it.
    Send(CB_SETITEMHEIGHT, WPARAM(-1), static_cast<LPARAM>(place().height));
    RECT field;
    GetWindowRect(handle(), &field);
    Send(CB_SETITEMHEIGHT, WPARAM(-1), 2 * place().height - (field.bottom - field.top));
    Send(CB_SETMINVISIBLE, kMostVisibleItems);
  }

  void Show(ui::Aspect aspect) override {
    if (aspect == ui::Aspect::Items) {
      FillItems();
    } else if (aspect == ui::Aspect::Text) {
      CatchUpWhenSeen();
    } else if (aspect == ui::Aspect::Locked) {
      // A choice in an open list is discarded.
      if (list().Locked() && DroppedDown()) Send(CB_SHOWDROPDOWN, FALSE);
      CatchUp();
    } else {
      NativePeer::Show(aspect);
    }
  }

  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override {
    switch (message) {
      case WM_KEYDOWN:
        if (const auto result = KeyDown(wparam)) return *result;
        return Default(message, wparam, lparam);
      case WM_SYSKEYDOWN:
        host().ShowKeyboardCues();
        if (!list().Locked() && (wparam == VK_DOWN || wparam == VK_UP)) Default(message, wparam, lparam);
        return TakenKey(message, wparam, lparam);
      case WM_CHAR:  // letters choose nothing
        return 0;
      case WM_CONTEXTMENU:
        OfferMenu(lparam);
        return 0;
      case WM_MOUSEWHEEL:
        // A closed list keeps its item; the window around it may scroll.
        if (DroppedDown()) break;
        return SendMessageW(GetParent(handle()), message, wparam, lparam);
      case WM_LBUTTONDOWN:
      case WM_LBUTTONDBLCLK:
        if (list().Locked()) {
          host().PressMayGoOn(*this);
          return 0;
        }
        break;
      default:
        break;
    }
    return NativePeer::Handle(message, wparam, lparam);
  }

  /// Selects the list's text.
  void CatchUp() override {
    const auto& items = list().Items();
    while (Send(CB_GETCOUNT) > static_cast<LRESULT>(items.size())) Send(CB_DELETESTRING, items.size());
    const auto found = std::find(items.begin(), items.end(), list().Text());
    auto index = static_cast<WPARAM>(found - items.begin());
    if (found == items.end()) {
      if (list().Text().empty())
        index = static_cast<WPARAM>(-1);
      else
        Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ToWide(list().Text()).c_str()));
    }
    Send(CB_SETCURSEL, index);
    InvalidateRect(handle(), nullptr, TRUE);
  }

 private:
  ui::ChoiceList& list() const { return static_cast<ui::ChoiceList&>(control()); }

  void FillItems() {
    Send(CB_RESETCONTENT);
    for (const std::string& item : list().Items())
      Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ToWide(item).c_str()));
    CatchUp();
  }

  /// Reports a changed selection to the list.
  void TellChoice() {
    const LRESULT selected = Send(CB_GETCURSEL);
    if (selected == CB_ERR || list().Locked()) return;
    std::string text = ToUtf8(ItemText(static_cast<WPARAM>(selected)));
    if (text != list().Text()) list().UserChooses(std::move(text));
  }

  std::optional<LRESULT> KeyDown(WPARAM key) {
    if (key == VK_ESCAPE && DroppedDown()) return Default(WM_KEYDOWN, key, 0);
    if (key == VK_RETURN && DroppedDown()) Default(WM_KEYDOWN, key, 0);  // takes the highlighted item
    if (!alive()) return 0;
    const bool locked = list().Locked();
    if (!locked && list().on_key_down && list().on_key_down(static_cast<int>(key), HeldKeys())) return 0;
    if (!alive() || host().NavigationKey(key) || locked) return 0;
    return std::nullopt;
  }

  void OfferMenu(LPARAM where) {
    if (DroppedDown() || !list().on_put_back) return;
    const auto chosen = ChooseFromMenu(handle(), where, {{kPutBack, list().CanBePutBack()}});
    if (chosen && alive()) list().UserPutsBack();
  }

  bool DroppedDown() const { return Send(CB_GETDROPPEDSTATE) != 0; }

  std::wstring ItemText(WPARAM index) const {
    const LRESULT length = Send(CB_GETLBTEXTLEN, index);
    if (length == CB_ERR) return {};
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    Send(CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
    return text;
  }
};

}  // namespace

std::unique_ptr<NativePeer> MakeChoiceList(PeerHost& host, Surface& parent, ui::Control& control) {
  return std::make_unique<ChoiceListPeer>(host, parent, control);
}

}  // namespace windows
