#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "windows/com/wide_text.h"
#include "windows/ui/field_peers.h"
#include "windows/ui/shell_services.h"
#include "windows/ui/surface.h"
#include "windows/ui/theme.h"

namespace windows {
namespace {

constexpr int kMostVisibleItems = 12;

}  // namespace

void ChoiceListPeer::MakeWindow() {
  Create(L"COMBOBOX", L"", CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | WS_VSCROLL);
  FillItems();
}

ui::Extent ChoiceListPeer::PreferredSize() const {
  int widest = 4 * theme().DigitWidth();
  for (const std::string& item : list().Items())
    widest = std::max(widest, theme().TextSize(ToWide(item)).width);
  return {widest + SystemMetric(SM_CXVSCROLL, parent().handle()) + theme().Scaled(16), theme().FieldHeight()};
}

void ChoiceListPeer::OnPlaced() {
  Send(CB_SETITEMHEIGHT, 0, theme().TextHeight() + theme().Scaled(4));
  // The field is higher than its item by the border, whose width the system does not tell.
  Send(CB_SETITEMHEIGHT, WPARAM(-1), static_cast<LPARAM>(place().height));
  RECT field;
  GetWindowRect(handle(), &field);
  Send(CB_SETITEMHEIGHT, WPARAM(-1), 2 * place().height - (field.bottom - field.top));
  Send(CB_SETMINVISIBLE, kMostVisibleItems);
}

void ChoiceListPeer::Show(ui::Aspect aspect) {
  if (aspect == ui::Aspect::Items) {
    FillItems();
  } else if (aspect == ui::Aspect::Text) {
    CatchUpWhenSeen();
  } else if (aspect == ui::Aspect::Locked) {
    // What is chosen in an open list is no longer wanted.
    if (list().Locked() && DroppedDown()) Send(CB_SHOWDROPDOWN, FALSE);
    CatchUp();
  } else {
    NativePeer::Show(aspect);
  }
}

void ChoiceListPeer::FillItems() {
  Send(CB_RESETCONTENT);
  for (const std::string& item : list().Items())
    Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ToWide(item).c_str()));
  CatchUp();
}

void ChoiceListPeer::CatchUp() {
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

std::wstring ChoiceListPeer::ItemText(WPARAM index) const {
  const LRESULT length = Send(CB_GETLBTEXTLEN, index);
  if (length == CB_ERR) return {};
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  Send(CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
  return text;
}

void ChoiceListPeer::TellChoice() {
  const LRESULT selected = Send(CB_GETCURSEL);
  if (selected == CB_ERR || list().Locked()) return;
  std::string text = ToUtf8(ItemText(static_cast<WPARAM>(selected)));
  if (text != list().Text()) list().UserChooses(std::move(text));
}

void ChoiceListPeer::Command(WORD notification) {
  if (notification == CBN_DROPDOWN && list().on_drop_down) list().on_drop_down();
  // While it is open, the list may still be left without a choice.
  if (notification == CBN_CLOSEUP || (notification == CBN_SELCHANGE && !DroppedDown())) TellChoice();
}

std::optional<LRESULT> ChoiceListPeer::KeyDown(WPARAM key) {
  if (key == VK_ESCAPE && DroppedDown()) return Default(WM_KEYDOWN, key, 0);
  if (key == VK_RETURN && DroppedDown()) Default(WM_KEYDOWN, key, 0);  // takes the item under the bar
  if (!alive()) return 0;
  const bool locked = list().Locked();
  if (!locked && list().on_key_down && list().on_key_down(static_cast<int>(key), HeldKeys())) return 0;
  if (!alive() || host().NavigationKey(key) || locked) return 0;
  return std::nullopt;
}

LRESULT ChoiceListPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_KEYDOWN:
      if (const auto result = KeyDown(wparam)) return *result;
      return Default(message, wparam, lparam);
    case WM_SYSKEYDOWN:
      host().ShowKeyboardCues();
      if (!list().Locked() && (wparam == VK_DOWN || wparam == VK_UP)) Default(message, wparam, lparam);
      return TakenKey(message, wparam, lparam);
    case WM_CHAR:  // a letter chooses nothing
      return 0;
    case WM_CONTEXTMENU:
      OfferMenu(lparam);
      return 0;
    case WM_MOUSEWHEEL:
      // A closed list keeps its item; what is around it may scroll.
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

void ChoiceListPeer::OfferMenu(LPARAM where) {
  if (DroppedDown() || !list().on_put_back) return;
  const auto chosen = ChooseFromMenu(handle(), where, {{kPutBack, list().CanBePutBack()}});
  if (chosen && alive()) list().UserPutsBack();
}

HBRUSH ChoiceListPeer::Colors(HDC dc) {
  const COLORREF back = ToColorRef(list().BackColor());
  SetTextColor(dc, TextColor(COLOR_WINDOW));
  SetBkColor(dc, back);
  SetDCBrushColor(dc, back);
  return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

void ChoiceListPeer::Draw(const DRAWITEMSTRUCT& item) {
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

}  // namespace windows
