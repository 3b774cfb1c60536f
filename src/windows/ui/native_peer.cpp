#include "windows/ui/native_peer.h"

#include <unordered_map>

#include "platform/error.h"
#include "windows/com/wide_text.h"
#include "windows/ui/surface.h"

namespace windows {
namespace {

// Faster than window properties and SetWindowSubclass, whose look-up for each message costs more under Wine
// than most messages do.
std::unordered_map<HWND, NativePeer*>& Peers() {
  static std::unordered_map<HWND, NativePeer*> peers;
  return peers;
}

bool TakesFocus(const ui::Control& control) {
  using Kind = ui::Control::Kind;
  switch (control.kind()) {
    case Kind::Label:
    case Kind::Frame:
    case Kind::StatusBar:
    case Kind::AnimationHost:
    case Kind::Picture:
      return false;
    default:
      return true;
  }
}

bool FixedInSize(const ui::Control& control) {
  return control.kind() == ui::Control::Kind::TextField || control.kind() == ui::Control::Kind::ChoiceList;
}

bool IsDown(int key) { return GetKeyState(key) < 0; }

}  // namespace

int HeldKeys() {
  return (IsDown(VK_SHIFT) ? ui::kShift : 0) | (IsDown(VK_CONTROL) ? ui::kCtrl : 0) |
         (IsDown(VK_MENU) ? ui::kAlt : 0);
}

NativePeer::NativePeer(PeerHost& host, Surface& parent, ui::Control& control)
    : host_(host), parent_(parent), control_(&control), backdrop_(parent.color()) {
  control.Attach(this);
}

NativePeer::~NativePeer() {
  Detach();
  if (handle_) DestroyWindow(handle_);
}

void NativePeer::Detach() {
  if (control_) control_->Attach(nullptr);
  control_ = nullptr;
}

NativePeer* NativePeer::Of(HWND window) {
  const auto found = Peers().find(window);
  return found == Peers().end() ? nullptr : found->second;
}

void NativePeer::Create(const wchar_t* window_class, const std::wstring& text, DWORD style,
                        DWORD extended_style) {
  style |= WS_CHILD | WS_CLIPSIBLINGS;
  if (control_->Visible()) style |= WS_VISIBLE;
  if (!control_->Enabled()) style |= WS_DISABLED;
  const POINT at = Position();
  handle_ = CreateWindowExW(extended_style, window_class, text.c_str(), style, static_cast<int>(at.x),
                            static_cast<int>(at.y), place_.width, place_.height, parent_.handle(), nullptr,
                            host_.ui_thread().instance(), nullptr);
  if (!handle_)
    throw platform::Error(static_cast<std::int32_t>(GetLastError()), "Windows",
                          "No window can be created for the control " + control_->name() + ".");
  Peers()[handle_] = this;
  class_procedure_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
  if (!control_->AccessibleName().empty())
    host_.ui_thread().accessible.SetName(handle_, ToWide(control_->AccessibleName()));
}

void NativePeer::Make() {
  if (handle_) return;
  MakeWindow();
  Rescale();
  if (place_ != ui::Rectangle{}) OnPlaced();
}

void NativePeer::TakeTheme() {
  place_ = {};  // the same place has another meaning now
  Measure();
  if (handle_) Rescale();
}

void NativePeer::Rescale() { Send(WM_SETFONT, reinterpret_cast<WPARAM>(theme().Font(weight())), FALSE); }

void NativePeer::Place(const ui::Rectangle& rectangle, HDWP& batch) {
  if (rectangle == place_) return;
  place_ = rectangle;
  if (!handle_) return;
  OnPlaced();
  const POINT at = Position();
  batch = DeferWindowPos(batch, handle_, nullptr, static_cast<int>(at.x), static_cast<int>(at.y),
                         place_.width, place_.height, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

POINT NativePeer::Position() const { return {place_.left - parent_.origin.x, place_.top - parent_.origin.y}; }

void NativePeer::Update(ui::Aspect aspect) {
  if (handle_) Show(aspect);
  if (alive() && Outgrown(aspect)) host_.Relayout();
}

bool NativePeer::Outgrown(ui::Aspect aspect) const {
  if (aspect == ui::Aspect::Visible || aspect == ui::Aspect::Items) return true;
  if (aspect != ui::Aspect::Text || FixedInSize(*control_)) return false;
  const ui::Extent wanted = PreferredSize();
  return wanted.width > place_.width || wanted.height > place_.height;
}

void NativePeer::Show(ui::Aspect aspect) {
  switch (aspect) {
    case ui::Aspect::Text: {
      const std::wstring text = ToWide(control_->Text());
      if (text != WindowText()) SetWindowTextW(handle_, text.c_str());
      break;
    }
    case ui::Aspect::Enabled:
    case ui::Aspect::Visible:
      if ((!control_->Enabled() || !control_->Visible()) && GetFocus() == handle_) host_.MoveOn(*this);
      if (!alive()) break;
      EnableWindow(handle_, control_->Enabled());
      ShowWindow(handle_, control_->Visible() ? SW_SHOWNA : SW_HIDE);
      break;
    case ui::Aspect::Colors:
      InvalidateRect(handle_, nullptr, TRUE);
      break;
    case ui::Aspect::ToolTip:
      host_.ShowToolTip(*this);
      break;
    default:
      break;
  }
}

COLORREF NativePeer::TextColor(int background) const {
  const ui::Color color = control_->ForeColor();
  return color == ui::Color::ButtonText ? GetSysColor(TextOn(background)) : ToColorRef(color);
}

HBRUSH NativePeer::Colors(HDC dc) {
  SetTextColor(dc, TextColor(backdrop_));
  SetBkColor(dc, GetSysColor(backdrop_));
  return GetSysColorBrush(backdrop_);
}

LRESULT CALLBACK NativePeer::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  NativePeer* const found = Of(window);
  // A procedure above this one may pass on later messages.
  if (!found) return DefWindowProcW(window, message, wparam, lparam);
  NativePeer& peer = *found;
  if (message == WM_NCDESTROY) {
    // The peer must not get messages after this one.
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(peer.class_procedure_));
    Peers().erase(window);
    peer.handle_ = nullptr;
    return CallWindowProcW(peer.class_procedure_, window, message, wparam, lparam);
  }
  if (message == WM_DESTROY) peer.Destroying();
  if (!peer.alive()) return CallWindowProcW(peer.class_procedure_, window, message, wparam, lparam);
  return peer.host_.ui_thread().Dispatch([&] {
    peer.CatchUpNow();
    return peer.Handle(message, wparam, lparam);
  });
}

void NativePeer::CatchUpWhenSeen() {
  behind_ = true;
  if (IsWindowVisible(handle_)) CatchUpNow();
}

void NativePeer::CatchUpNow() {
  if (!behind_) return;
  behind_ = false;
  CatchUp();
}

LRESULT NativePeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SETFOCUS: {
      const LRESULT result = Default(message, wparam, lparam);
      if (alive() && TakesFocus(*control_)) host_.Arrived(*this);
      return result;
    }
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
      if (TakesFocus(*control_) && !host_.PressMayGoOn(*this)) return 0;
      break;
    case WM_KEYDOWN:
      if (host_.NavigationKey(wparam)) return 0;
      break;
    case WM_CHAR:  // from the navigation keys
      if (wparam == VK_TAB || wparam == VK_RETURN || wparam == VK_ESCAPE) return 0;
      break;
    case WM_SYSKEYDOWN:
      host_.ShowKeyboardCues();
      break;
    case WM_SYSCHAR:
      if (host_.AcceleratorKey(static_cast<char32_t>(wparam))) return 0;
      break;
    default:
      break;
  }
  return Default(message, wparam, lparam);
}

LRESULT NativePeer::Default(UINT message, WPARAM wparam, LPARAM lparam) {
  return CallWindowProcW(class_procedure_, handle_, message, wparam, lparam);
}

LRESULT NativePeer::TakenKey(UINT message, WPARAM wparam, LPARAM lparam) const {
  return message == WM_SYSKEYDOWN ? DefWindowProcW(handle_, message, wparam, lparam) : 0;
}

LRESULT NativePeer::Send(UINT message, WPARAM wparam, LPARAM lparam) const {
  return SendMessageW(handle_, message, wparam, lparam);
}

std::wstring NativePeer::WindowText() const {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(handle_)), L'\0');
  if (!text.empty()) GetWindowTextW(handle_, text.data(), static_cast<int>(text.size()) + 1);
  return text;
}

}  // namespace windows
