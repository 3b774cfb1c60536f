#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "platform/raised.h"
#include "windows/com/wide_text.h"
#include "windows/ui/peers.h"
#include "windows/ui/picture_peer.h"
#include "windows/ui/shell_services.h"

namespace windows {
namespace {

/// A report list that asks the control for the texts it shows. Without boxes it does not even know its rows,
/// so that long lists cost no more than short ones. Each column is as wide as its widest text since the list
/// was last empty.
class ListViewPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;

  ui::Extent PreferredSize() const override { return {theme().Scaled(560), theme().Scaled(260)}; }

  LRESULT Notify(NMHDR& header) override {
    switch (header.code) {
      case LVN_GETDISPINFOW:
        Answer(reinterpret_cast<NMLVDISPINFOW&>(header).item);
        return 0;
      case LVN_ITEMCHANGING:  // TRUE refuses
        return RefusesTick(reinterpret_cast<const NMLISTVIEW&>(header)) ? TRUE : FALSE;
      case LVN_ITEMCHANGED:
        Changed(reinterpret_cast<const NMLISTVIEW&>(header));
        return 0;
      case LVN_ODSTATECHANGED:
        list().UserSelects(SelectedRow());
        return 0;
      case NM_DBLCLK:
        if (reinterpret_cast<const NMITEMACTIVATE&>(header).iItem >= 0 && list().on_double_click)
          list().on_double_click();
        return 0;
      default:
        return 0;
    }
  }

 protected:
  void MakeWindow() override {
    Create(WC_LISTVIEWW, L"",
           LVS_REPORT | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER |
               (list().has_ticks ? 0 : static_cast<DWORD>(LVS_OWNERDATA)),
           WS_EX_CLIENTEDGE);
    const DWORD style = LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES | LVS_EX_DOUBLEBUFFER |
                        (list().has_ticks ? static_cast<DWORD>(LVS_EX_CHECKBOXES) : 0);
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, style, style);
    MakeColumns();
  }

  void Rescale() override {
    NativePeer::Rescale();
    MakeImages();
    for (std::size_t column = 0; column < columns_.size(); ++column) Fit(column);
    const bool first = columns_.empty();
    if (first) ForgetRows();
    MeasureRows();
    if (first) CatchUpWhenSeen();
  }

  void Show(ui::Aspect aspect) override {
    if (aspect != ui::Aspect::Rows) return NativePeer::Show(aspect);
    if (list().Rows().empty() && list().has_ticks) {
      const platform::Raised empties(inserting_);
      Send(LVM_DELETEALLITEMS);
    }
    MeasureRows();
    CatchUpWhenSeen();
  }

  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override {
    switch (message) {
      case WM_KEYDOWN: {
        if (HeldKeys() != ui::kCtrl) break;
        if (wparam == 'A') return SelectAll(), 0;
        if (wparam == 'C' || wparam == VK_INSERT) return Copy(), 0;
        break;
      }
      case WM_SYSCOLORCHANGE: {
        // Some systems' lists do not take a new background themselves.
        const LRESULT result = NativePeer::Handle(message, wparam, lparam);
        Send(LVM_SETBKCOLOR, 0, static_cast<LPARAM>(GetSysColor(COLOR_WINDOW)));
        return result;
      }
      case WM_CHAR:  // from the keys above; letters find a row
        if (wparam < L' ') return 0;
        break;
      case WM_CONTEXTMENU:
        // Not for the column headers.
        if (reinterpret_cast<HWND>(wparam) == handle()) return OfferMenu(lparam), 0;
        break;
      default:
        break;
    }
    return NativePeer::Handle(message, wparam, lparam);
  }

  void CatchUp() override {
    const auto& rows = list().Rows();
    if (list().has_ticks)
      InsertItems();
    else
      Send(LVM_SETITEMCOUNT, rows.size(), rows.empty() ? 0 : LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
    if (list().follows_end && !rows.empty()) Send(LVM_ENSUREVISIBLE, rows.size() - 1, FALSE);
  }

 private:
  ui::ListView& list() const { return static_cast<ui::ListView&>(control()); }

  void Answer(LVITEMW& item) {
    const auto row = static_cast<std::size_t>(item.iItem), column = static_cast<std::size_t>(item.iSubItem);
    if (row >= list().Rows().size()) return;
    if (item.mask & LVIF_IMAGE) item.iImage = ImageOf(list().Rows()[row].icon);
    if ((item.mask & LVIF_TEXT) && column < answered_.size()) {
      answered_[column] = ToWide(list().ShownText(row, column));
      item.pszText = answered_[column].data();
    }
  }

  // The system's numbers of a row's box: none, empty, ticked.
  static UINT BoxIn(UINT state) { return (state & LVIS_STATEIMAGEMASK) >> 12; }
  static UINT BoxOf(const ui::ListView::Row& row) { return !row.tick ? 0 : *row.tick ? 2 : 1; }

  /// Items that know nothing of their rows but their boxes.
  void InsertItems() {
    const platform::Raised inserts(inserting_);
    for (auto row = static_cast<std::size_t>(Send(LVM_GETITEMCOUNT)); row < list().Rows().size(); ++row) {
      LVITEMW item{};
      item.mask = LVIF_TEXT;
      item.iItem = static_cast<int>(row);
      item.pszText = LPSTR_TEXTCALLBACKW;
      Send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
      item.state = INDEXTOSTATEIMAGEMASK(BoxOf(list().Rows()[row]));
      item.stateMask = LVIS_STATEIMAGEMASK;
      Send(LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
    }
  }

  /// The system ticks any row with the blank key.
  bool RefusesTick(const NMLISTVIEW& change) const {
    const auto row = static_cast<std::size_t>(change.iItem);
    return !inserting_ && list().has_ticks && change.iItem >= 0 && row < list().Rows().size() &&
           !list().Rows()[row].tick && BoxIn(change.uNewState) != BoxIn(change.uOldState);
  }

  void Changed(const NMLISTVIEW& change) {
    if (inserting_ || !(change.uChanged & LVIF_STATE)) return;
    if (list().has_ticks && change.iItem >= 0 && BoxIn(change.uNewState) != BoxIn(change.uOldState))
      list().UserTicks(static_cast<std::size_t>(change.iItem), BoxIn(change.uNewState) == 2);
    if (alive() && ((change.uNewState ^ change.uOldState) & LVIS_SELECTED)) list().UserSelects(SelectedRow());
  }

  std::optional<std::size_t> SelectedRow() const {
    const LRESULT row = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    return row < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(row));
  }

  void SelectAll() const {
    LVITEMW selected{};
    selected.state = selected.stateMask = LVIS_SELECTED;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&selected));
  }

  void Copy() const {
    std::vector<std::size_t> rows;
    for (LRESULT row = -1; (row = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED)) != -1;)
      rows.push_back(static_cast<std::size_t>(row));
    list().UserCopies(rows);
  }

  /// Where the keyboard opens a menu: below the row in use, or below the headers if that is out of sight.
  LPARAM MenuPlace() const {
    RECT view, row{}, headers{};
    GetClientRect(handle(), &view);
    GetClientRect(reinterpret_cast<HWND>(Send(LVM_GETHEADER)), &headers);
    const LRESULT used = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
    if (used != -1) Send(LVM_GETITEMRECT, static_cast<WPARAM>(used), reinterpret_cast<LPARAM>(&row));
    const bool in_sight = row.top >= headers.bottom && row.bottom <= view.bottom;
    return PlaceIn(handle(), {0, in_sight ? row.bottom : headers.bottom});
  }

  void OfferMenu(LPARAM where) const {
    if (where == -1) where = MenuPlace();
    const auto chosen = ChooseFromMenu(handle(), where,
                                       {{L"&Copy\tCtrl+C", Send(LVM_GETSELECTEDCOUNT) > 0},
                                        {L"Select &All\tCtrl+A", !list().Rows().empty()}});
    if (!chosen || !alive()) return;
    *chosen == 0 ? Copy() : SelectAll();
  }

  void MakeImages() {
    if (!list().small_icons) return;
    std::vector<Picture> pictures;
    for (const ui::ImageList::Image& image : list().small_icons->Images())
      pictures.push_back(image.picture == ui::ImageList::Picture::GreenMark ? Picture::GreenMark
                                                                            : Picture::RedMark);
    // The list view destroys its last image list itself.
    const HIMAGELIST images = DrawPictures(pictures, theme().Scaled(16)).release();
    const OwnedImages former(
        reinterpret_cast<HIMAGELIST>(Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images))));
  }

  int ImageOf(ui::ListView::Icon icon) const {
    const auto place =
        list().small_icons ? list().small_icons->Find(ui::ListView::KeyOf(icon)) : std::nullopt;
    return place ? static_cast<int>(*place) : I_IMAGENONE;
  }

  void MakeColumns() {
    const auto& headers = list().Headers();
    answered_.resize(headers.size());
    for (std::size_t column = 0; column < headers.size(); ++column) {
      std::wstring text = ToWide(headers[column]);
      LVCOLUMNW description{};
      description.mask = LVCF_TEXT;
      description.pszText = text.data();
      Send(LVM_INSERTCOLUMNW, column, reinterpret_cast<LPARAM>(&description));
    }
  }

  void ForgetRows() {
    const auto& headers = list().Headers();
    rows_measured_ = 0;
    columns_.assign(headers.size(), {});
    for (std::size_t column = 0; column < headers.size(); ++column)
      Widen(column, ToWide(headers[column]), 24);
  }

  void MeasureRows() {
    const auto& rows = list().Rows();
    if (rows.size() < rows_measured_) ForgetRows();
    constexpr int kPadding = 14;
    const int mark = list().has_ticks || list().small_icons ? 20 : 0;  // of a box or an icon
    for (; rows_measured_ < rows.size(); ++rows_measured_) {
      const auto& cells = rows[rows_measured_].cells;
      for (std::size_t column = 0; column < std::min(cells.size(), columns_.size()); ++column)
        Widen(column, ToWide(cells[column]), column == 0 ? kPadding + mark : kPadding);
    }
  }

  /// `room` is the part of the column's width that is not text, at 96 dots per inch.
  void Widen(std::size_t column, const std::wstring& text, int room) {
    if (theme().TextSize(text).width + theme().Scaled(room) <= columns_[column].width) return;
    columns_[column] = {0, text, room};
    Fit(column);
  }

  /// Measures only the widest text, as there may be a million rows.
  void Fit(std::size_t column) {
    auto& [width, widest, room] = columns_[column];
    width = theme().TextSize(widest).width + theme().Scaled(room);
    Send(LVM_SETCOLUMNWIDTH, column, width);
  }

  struct Column {
    int width = 0;
    std::wstring widest;
    int room = 0;
  };
  std::size_t rows_measured_ = 0;
  bool inserting_ = false;
  std::vector<Column> columns_;
  std::vector<std::wstring> answered_;  // the texts last passed to the system, one per column
};

}  // namespace

std::unique_ptr<NativePeer> MakeListView(PeerHost& host, Surface& parent, ui::Control& control) {
  return std::make_unique<ListViewPeer>(host, parent, control);
}

}  // namespace windows
