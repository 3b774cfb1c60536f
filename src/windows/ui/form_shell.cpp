#include "windows/ui/form_shell.h"

#include <windowsx.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/raised.h"
#include "windows/com/wide_text.h"
#include "windows/ui/shell_services.h"

namespace windows {
namespace {

/// Sent by programs that read the whole window, such as the director.
UINT MakeAllWindowsMessage() {
  static const UINT message = RegisterWindowMessageW(L"FormSurface.MakeAllWindows");
  return message;
}

// Window styles in the order of ui::BorderStyle.
constexpr DWORD kTitled = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;
constexpr struct {
  DWORD style, extended;
} kStyles[] = {{WS_POPUP, WS_EX_TOOLWINDOW}, {kTitled | WS_MINIMIZEBOX, 0},
               {WS_OVERLAPPEDWINDOW, 0},     {kTitled, WS_EX_DLGMODALFRAME},
               {kTitled, WS_EX_TOOLWINDOW},  {kTitled | WS_THICKFRAME, WS_EX_TOOLWINDOW}};

void MoveTo(HWND window, const RECT& place) {
  SetWindowPos(window, nullptr, static_cast<int>(place.left), static_cast<int>(place.top),
               static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top),
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

}  // namespace

FormShell::FormShell(UiThread& ui_thread, ui::Form& form)
    : Surface(ui_thread, COLOR_3DFACE), form_(form), controls_(*this, form) {}

FormShell::~FormShell() {
  Close();
  Destroy();
}

void FormShell::Create() {
  const auto& [style, extended] = kStyles[static_cast<std::size_t>(form_.border_style())];
  const auto on_top = form_.always_on_top ? static_cast<DWORD>(WS_EX_TOPMOST) : 0;
  const auto not_alone = Owner() ? static_cast<DWORD>(WS_MINIMIZEBOX) : 0;
  Surface::Create(ToWide(form_.Caption()).c_str(), style & ~not_alone,
                  extended | WS_EX_CONTROLPARENT | on_top, Owner());
  controls_.Create();
  created_ = true;
}

void FormShell::Close() {
  if (closed()) return;
  controls_.Close();
  if (!handle()) return;
  LetOwnerAct();
  ShowWindow(handle(), SW_HIDE);
  EnableWindow(handle(), FALSE);
}

HWND FormShell::Owner() const {
  return form_.Owner() ? reinterpret_cast<HWND>(form_.Owner()->hwnd()) : nullptr;
}

void FormShell::LetOwnerAct() const {
  const HWND owner = GetWindow(handle(), GW_OWNER);
  if (!owner || IsWindowEnabled(owner)) return;
  EnableWindow(owner, TRUE);
  // The loop that waits for the end of this window may be waiting for a message.
  PostMessageW(owner, WM_NULL, 0, 0);
}

RECT FormShell::FormBounds() const {
  const auto pixels = [this](double twips) { return std::lround(twips / ui_thread().TwipsPerPixel()); };
  const LONG left = pixels(form_.Left()), top = pixels(form_.Top());
  return {left, top, left + pixels(form_.Width()), top + pixels(form_.Height())};
}

ui::Extent FormShell::OuterMinimum() const {
  const ui::Extent frame = FrameOf(handle()), client = controls_.Minimum();
  return {client.width + frame.width, client.height + frame.height};
}

ui::FormWindow::Size FormShell::BestSize() const {
  const ui::Extent size = OuterMinimum();
  const double twips = 1440.0 / theme().dpi();
  return {size.width * twips, size.height * twips};
}

double FormShell::BoundsScale() const { return ui_thread().TwipsPerPixel() * theme().dpi() / 1440.0; }

void FormShell::UpdateCaption() { SetWindowTextW(handle(), ToWide(form_.Caption()).c_str()); }

void FormShell::UpdateBounds() {
  const platform::Raised moves(program_moves_);
  const RECT bounds = FormBounds();
  if (IsIconic(handle()) || IsZoomed(handle())) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(handle(), &placement);
    placement.rcNormalPosition = bounds;
    if (!form_.Visible()) placement.showCmd = SW_HIDE;
    SetWindowPlacement(handle(), &placement);
  } else {
    MoveTo(handle(), bounds);
  }
}

void FormShell::UpdateState() {
  const platform::Raised moves(program_moves_);
  if (!form_.Visible()) {
    LetOwnerAct();
    return static_cast<void>(ShowWindow(handle(), SW_HIDE));
  }
  controls_.Appear();
  if (Owner()) EnableWindow(Owner(), FALSE);
  constexpr int kCommands[] = {SW_SHOWNORMAL, SW_SHOWMINIMIZED, SW_SHOWMAXIMIZED};
  ShowWindow(handle(), kCommands[static_cast<std::size_t>(form_.State())]);
}

void FormShell::Activate() {
  // Not the window itself below a box that waits for an answer.
  if (SetForegroundWindow(GetLastActivePopup(handle()))) return;
  // The system keeps another program's window in front.
  FLASHWINFO flash{sizeof flash, handle(), FLASHW_TRAY | FLASHW_TIMERNOFG, 0, 0};
  FlashWindowEx(&flash);
}

void FormShell::Repaint() {
  RedrawWindow(handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

void FormShell::Rest() {
  ShowWindow(handle(), SW_HIDE);
  SetWindowTextW(handle(), L"");
}

LRESULT FormShell::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  if (closed() || !created_) return Surface::Handle(message, wparam, lparam);
  if (message == MakeAllWindowsMessage()) controls_.MakeAllWindows();
  switch (message) {
    case WM_CLOSE:
      form_.CloseRequested(ui::CloseReason::User);
      return 0;
    case WM_QUERYENDSESSION:  // Windows does not wait for unapplied edits
      return TRUE;
    case WM_ENDSESSION:
      if (wparam) form_.CloseRequested(ui::CloseReason::SystemShutdown);
      return 0;
    case WM_ACTIVATE:
      return Activated(wparam, lparam);
    case WM_SETFOCUS:
      controls_.RestoreFocus();
      return 0;
    case WM_KEYDOWN:
      return controls_.NavigationKey(wparam) ? 0 : Surface::Handle(message, wparam, lparam);
    case WM_SYSCHAR:
      if (controls_.AcceleratorKey(static_cast<char32_t>(wparam))) return 0;
      break;
    case WM_SYSKEYDOWN:
      controls_.ShowKeyboardCues();
      break;
    case WM_GETMINMAXINFO:
      LimitSize(*reinterpret_cast<MINMAXINFO*>(lparam));
      return 0;
    case WM_SIZE:
      Sized(wparam);
      return 0;
    case WM_MOVE:
      TellBounds();
      return 0;
    case WM_HSCROLL:
    case WM_VSCROLL:
      controls_.Scroll(message == WM_HSCROLL ? SB_HORZ : SB_VERT, LOWORD(wparam));
      return 0;
    case WM_MOUSEWHEEL:
      controls_.TurnWheel(GET_WHEEL_DELTA_WPARAM(wparam));
      return 0;
    case WM_DPICHANGED:
      Refit(HIWORD(wparam), *reinterpret_cast<const RECT*>(lparam));
      return 0;
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      SystemChanged(message, wparam, lparam);
      break;
    case WM_CONTEXTMENU:
      if (OfferDataTexts(lparam)) return 0;
      break;
    case WM_SETCURSOR:
      if (ShowHourglass(lparam)) return TRUE;
      break;
    default:
      break;
  }
  return Surface::Handle(message, wparam, lparam);
}

LRESULT FormShell::Activated(WPARAM wparam, LPARAM lparam) {
  if (LOWORD(wparam) == WA_INACTIVE) {
    controls_.SaveFocus();
    return Surface::Handle(WM_ACTIVATE, wparam, lparam);
  }
  Surface::Handle(WM_ACTIVATE, wparam, lparam);
  if (!closed() && !HIWORD(wparam)) form_.WindowActivated();
  return 0;
}

void FormShell::LimitSize(MINMAXINFO& limits) const {
  // The program may set any size.
  if (program_moves_) {
    limits.ptMinTrackSize = {1, 1};
    limits.ptMaxTrackSize = {SHRT_MAX, SHRT_MAX};
    return;
  }
  // On a screen smaller than the content, the user can scroll.
  const ui::Extent minimum = OuterMinimum(), screen = WorkAreaAround(handle());
  limits.ptMinTrackSize = {std::min(minimum.width, screen.width), std::min(minimum.height, screen.height)};
}

void FormShell::Sized(WPARAM how) {
  if (form_.Visible()) {
    form_.WindowStateChanged(how == SIZE_MINIMIZED   ? ui::WindowState::Minimized
                             : how == SIZE_MAXIMIZED ? ui::WindowState::Maximized
                                                     : ui::WindowState::Normal);
  }
  if (how == SIZE_MINIMIZED) return;
  ArrangeInside();
  TellBounds();
}

void FormShell::ArrangeInside() {
  RECT outer;
  GetWindowRect(handle(), &outer);
  const ui::Extent frame = FrameOf(handle());
  controls_.Arrange({static_cast<int>(outer.right - outer.left) - frame.width,
                     static_cast<int>(outer.bottom - outer.top) - frame.height});
}

void FormShell::Refit(int dpi, RECT place) {
  const ui::Extent room = controls_.room(), former = controls_.Minimum();
  controls_.TakeTheme(ui_thread().ThemeFor(dpi));
  const ui::Extent minimum = OuterMinimum(), screen = WorkAreaAround(handle());
  // Fonts do not scale in proportion: a side at its minimum stays there, and none starts to cut.
  const auto fit = [](LONG from, LONG& to, int had, int needed, int needs) {
    if (had >= needed) to = from + (had == needed ? needs : std::max<LONG>(needs, to - from));
  };
  if (!IsZoomed(handle())) {
    fit(place.left, place.right, room.width, former.width, std::min(minimum.width, screen.width));
    fit(place.top, place.bottom, room.height, former.height, std::min(minimum.height, screen.height));
  }
  if (!IsIconic(handle())) {
    // If the program moves the window to another screen, the program sets its size.
    if (!program_moves_) {
      const platform::Raised moves(program_moves_);
      MoveTo(handle(), place);
    }
    ArrangeInside();
  }
  icons_.Take(handle(), ui_thread().instance());
  RedrawLater();
}

void FormShell::RedrawLater() {
  RedrawWindow(handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

/// Passes the message on, as most controls get it only from their parents.
void FormShell::SystemChanged(UINT message, WPARAM wparam, LPARAM lparam) {
  controls_.HandOn(message, wparam, lparam);
  const int dpi = theme().dpi();
  const bool measures = message == WM_THEMECHANGED ||
                        (message == WM_SETTINGCHANGE && wparam == SPI_SETNONCLIENTMETRICS) ||
                        ui_thread().ThemeFor(dpi).get() != &theme();
  if (!measures) return RedrawLater();
  RECT place;
  GetWindowRect(handle(), &place);
  Refit(dpi, place);
}

void FormShell::TellBounds() {
  if (IsIconic(handle())) return;
  RECT actual;
  GetWindowRect(handle(), &actual);
  const RECT known = FormBounds();
  if (EqualRect(&actual, &known)) return;
  const double scale = ui_thread().TwipsPerPixel();
  form_.WindowMoved(actual.left * scale, actual.top * scale, (actual.right - actual.left) * scale,
                    (actual.bottom - actual.top) * scale);
}

/// Offers to copy the texts outside of fields, also by keyboard.
bool FormShell::OfferDataTexts(LPARAM where) const {
  POINT at{GET_X_LPARAM(where), GET_Y_LPARAM(where)};
  RECT client;
  GetClientRect(handle(), &client);
  const bool by_keyboard = where == -1;
  const bool inside = by_keyboard || (ScreenToClient(handle(), &at) && PtInRect(&client, at));
  if (by_keyboard) where = PlaceIn(handle(), {0, 0});
  return inside && OfferToCopy(handle(), where, ui::DataTexts(form_.layout()));
}

/// Controls ask their parent before they show their own pointer.
bool FormShell::ShowHourglass(LPARAM lparam) const {
  if (!ui_thread().hourglass || LOWORD(lparam) != HTCLIENT) return false;
  SetCursor(LoadCursorW(nullptr, IDC_WAIT));
  return true;
}

FormWindowPeer::~FormWindowPeer() {
  UiThread& ui_thread = shell_.ui_thread();
  shell_.Close();
  ui_thread.DestroyClosed();
}

}  // namespace windows
