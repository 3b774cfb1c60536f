#include "windows/ui/tabs_peer.h"

#include <windows.h>

#include <commctrl.h>

#include "windows/com/wide_text.h"
#include "windows/ui/picture_peer.h"

namespace windows {
namespace {

constexpr int kPageColor = COLOR_WINDOW;

// A mark is in the room beside the caption, so that tabs do not move when it appears.
constexpr int kMark = 8, kBesideCaption = 10;

using OwnedRegion = std::unique_ptr<std::remove_pointer_t<HRGN>, GdiDelete>;

}  // namespace

void TabsPeer::MakeWindow() {
  Create(WC_TABCONTROLW, L"", WS_CLIPCHILDREN, WS_EX_CONTROLPARENT);
  for (std::size_t index = 0; index < tabs().Captions().size(); ++index) {
    std::wstring caption = ToWide(tabs().Captions()[index]);
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = caption.data();
    Send(TCM_INSERTITEMW, index, reinterpret_cast<LPARAM>(&item));
    pages_.push_back(std::make_unique<Surface>(host().ui_thread(), kPageColor));
    pages_.back()->Create(L"", WS_CHILD, WS_EX_CONTROLPARENT, handle());
  }
  ShowPage();
}

TabsPeer::~TabsPeer() = default;

void TabsPeer::Rescale() {
  // The padding takes effect only when the font is set.
  Send(TCM_SETPADDING, 0, MAKELPARAM(theme().Scaled(kBesideCaption), theme().Scaled(4)));
  mark_ = DrawPicture(Picture::Edit, theme().Scaled(kMark));
  NativePeer::Rescale();
}

ui::Insets TabsPeer::Insets() const {
  RECT page{0, 0, 1000, 1000};
  Send(TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&page));
  return {static_cast<int>(page.left), static_cast<int>(page.top), static_cast<int>(1000 - page.right),
          static_cast<int>(1000 - page.bottom)};
}

ui::Extent TabsPeer::PreferredSize() const {
  const RECT first = PlaceOfTab(0), last = PlaceOfTab(pages_.size() - 1);
  return {static_cast<int>(last.right - first.left) + theme().Scaled(8), static_cast<int>(last.bottom)};
}

void TabsPeer::OnPlaced() {
  const ui::Insets insets = Insets();
  for (const auto& page : pages_) {
    page->origin = {place().left + insets.left, place().top + insets.top};
    SetWindowPos(page->handle(), nullptr, insets.left, insets.top, place().width - insets.left - insets.right,
                 place().height - insets.top - insets.bottom, SWP_NOZORDER | SWP_NOACTIVATE);
  }
}

void TabsPeer::Show(ui::Aspect aspect) {
  if (aspect == ui::Aspect::Selection) return ShowPage();
  if (aspect != ui::Aspect::Marks) return NativePeer::Show(aspect);
  // Only the marks: the system takes long to draw all tabs.
  for (std::size_t index = 0; index < pages_.size(); ++index) {
    const RECT place = PlaceOfMark(index);
    InvalidateRect(handle(), &place, TRUE);
  }
}

RECT TabsPeer::PlaceOfTab(std::size_t index) const {
  RECT place{};
  Send(TCM_GETITEMRECT, index, reinterpret_cast<LPARAM>(&place));
  return place;
}

RECT TabsPeer::PlaceOfMark(std::size_t index) const {
  const int size = theme().Scaled(kMark);
  const RECT tab = PlaceOfTab(index);
  const LONG left = tab.left + theme().Scaled(kBesideCaption - kMark) / 2;
  // The tab in front is drawn a little higher.
  const LONG top = (tab.top + tab.bottom - size) / 2 - (index == tabs().Selected() ? theme().Scaled(2) : 0);
  return {left, top, left + size, top + size};
}

void TabsPeer::PaintMarks(HDC dc) const {
  const int size = theme().Scaled(kMark);
  for (const std::size_t index : tabs().Marked()) {
    const RECT place = PlaceOfMark(index);
    DrawIconEx(dc, static_cast<int>(place.left), static_cast<int>(place.top), mark_.get(), size, size, 0,
               nullptr, DI_NORMAL);
  }
}

/// The control draws itself; the marks go on top, each time only where it has drawn.
LRESULT TabsPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message != WM_PAINT && message != WM_PRINTCLIENT) return NativePeer::Handle(message, wparam, lparam);
  const OwnedRegion drawn(CreateRectRgn(0, 0, 0, 0));
  GetUpdateRgn(handle(), drawn.get(), FALSE);
  const LRESULT result = NativePeer::Handle(message, wparam, lparam);
  if (message == WM_PRINTCLIENT) {
    PaintMarks(reinterpret_cast<HDC>(wparam));
    return result;
  }
  const HDC dc = GetDC(handle());
  SelectClipRgn(dc, drawn.get());
  PaintMarks(dc);
  ReleaseDC(handle(), dc);
  return result;
}

void TabsPeer::MakeFrontPage() const { host().PageAppears(*pages_.at(tabs().Selected())); }

void TabsPeer::ShowPage() {
  const std::size_t front = tabs().Selected();
  if (Send(TCM_GETCURSEL) != static_cast<LRESULT>(front)) Send(TCM_SETCURSEL, front);
  MakeFrontPage();
  const HWND focus = GetFocus();
  ShowWindow(pages_.at(front)->handle(), SW_SHOWNA);
  for (std::size_t index = 0; index < pages_.size(); ++index) {
    if (index == front) continue;
    // The focus must not stay on a hidden page.
    if (focus && IsChild(pages_[index]->handle(), focus)) ::SetFocus(handle());
    ShowWindow(pages_[index]->handle(), SW_HIDE);
  }
}

LRESULT TabsPeer::Notify(NMHDR& header) {
  if (header.code == TCN_SELCHANGE) tabs().Select(static_cast<std::size_t>(Send(TCM_GETCURSEL)));
  return 0;
}

}  // namespace windows
