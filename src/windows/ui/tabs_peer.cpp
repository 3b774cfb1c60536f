#include "windows/ui/tabs_peer.h"

#include <windows.h>

#include <commctrl.h>

#include <array>
#include <utility>

#include "windows/com/wide_text.h"
#include "windows/ui/picture_peer.h"

namespace windows {
namespace {

constexpr int kPageColor = COLOR_WINDOW;

// Unmarked tabs have a blank image, so that tabs do not move when a mark appears.
constexpr std::array kImages = {Picture::Blank, Picture::Edit};

}  // namespace

void TabsPeer::MakeWindow() {
  Create(WC_TABCONTROLW, L"", WS_CLIPCHILDREN, WS_EX_CONTROLPARENT);
  for (std::size_t index = 0; index < tabs().Captions().size(); ++index) {
    std::wstring caption = ToWide(tabs().Captions()[index]);
    TCITEMW item{};
    item.mask = TCIF_TEXT | TCIF_IMAGE;
    item.iImage = tabs().Marked().contains(index);
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
  Send(TCM_SETPADDING, 0, MAKELPARAM(theme().Scaled(5), theme().Scaled(4)));
  OwnedImages images = DrawPictures(kImages, theme().Scaled(8));
  Send(TCM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images.get()));
  images_ = std::move(images);  // frees the previous images, which are no longer shown
  NativePeer::Rescale();
}

ui::Insets TabsPeer::Insets() const {
  RECT page{0, 0, 1000, 1000};
  Send(TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&page));
  return {static_cast<int>(page.left), static_cast<int>(page.top), static_cast<int>(1000 - page.right),
          static_cast<int>(1000 - page.bottom)};
}

ui::Extent TabsPeer::PreferredSize() const {
  RECT last{};
  Send(TCM_GETITEMRECT, pages_.size() - 1, reinterpret_cast<LPARAM>(&last));
  RECT first{};
  Send(TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&first));
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
  if (aspect == ui::Aspect::Selection)
    ShowPage();
  else if (aspect == ui::Aspect::Marks)
    ShowMarks();
  else
    NativePeer::Show(aspect);
}

void TabsPeer::ShowMarks() const {
  for (std::size_t index = 0; index < pages_.size(); ++index) {
    const int image = tabs().Marked().contains(index);
    TCITEMW item{};
    item.mask = TCIF_IMAGE;
    Send(TCM_GETITEMW, index, reinterpret_cast<LPARAM>(&item));
    // The control lays out all its tabs for each changed item.
    if (std::exchange(item.iImage, image) != image)
      Send(TCM_SETITEMW, index, reinterpret_cast<LPARAM>(&item));
  }
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
