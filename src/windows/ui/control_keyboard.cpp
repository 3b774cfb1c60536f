// The focus and the keyboard among the controls of a window. ui/keyboard.h determines which key leads to
// which control.

#include "windows/ui/control_set.h"

namespace windows {

void ControlSet::Arrived(NativePeer& peer) { focus_.Arrived(peer.control()); }

bool ControlSet::MoveFocus(NativePeer& peer) {
  if (focus_.current() == &peer.control() && GetFocus() == peer.handle()) return true;
  const int messages = ui_thread().messages_shown;
  focus_.LeaveFor(peer.control(), [&] { SetFocus(peer.handle()); });
  return !closed_ && messages == ui_thread().messages_shown && GetFocus() == peer.handle();
}

bool ControlSet::MoveFocus(ui::Control* control) {
  NativePeer* const peer = control ? PeerOf(*control) : nullptr;
  if (!peer || !MoveFocus(*peer)) return false;
  // The mouse reaches only visible controls.
  Reveal(*peer);
  return true;
}

bool ControlSet::PressMayGoOn(NativePeer& peer) { return MoveFocus(peer); }

void ControlSet::TakeFocus(NativePeer& peer) {
  for (const ui::PagePlace& place : ui::PagesAround(form_.layout(), peer.control())) {
    place.tabs->Select(place.page);
    if (closed_) return;
  }
  NeedWindow(peer);
  saved_focus_ = peer.handle();
  Reveal(peer);
  // A hidden or minimised window takes the focus when it is shown.
  if (IsWindowVisible(peer.handle()) && !IsIconic(window_.handle())) SetFocus(peer.handle());
}

void ControlSet::MoveOn(NativePeer& peer) {
  ui::Control* const next = ui::NextControl(form_.layout(), &peer.control(), ui::Direction::Forward);
  if (next && next != &peer.control())
    MoveFocus(next);
  else
    SetFocus(window_.handle());
}

void ControlSet::SaveFocus() {
  const HWND focus = GetFocus();
  if (focus && IsChild(window_.handle(), focus)) saved_focus_ = focus;
}

void ControlSet::RestoreFocus() {
  if (saved_focus_ && IsChild(window_.handle(), saved_focus_) && IsWindowEnabled(saved_focus_) &&
      IsWindowVisible(saved_focus_)) {
    SetFocus(saved_focus_);
    return;
  }
  ui::Control* first = ui::NextControl(form_.layout(), nullptr, ui::Direction::Forward);
  // The first field, not its tab.
  if (first && first->kind() == ui::Control::Kind::Tabs)
    first = ui::NextControl(form_.layout(), first, ui::Direction::Forward);
  MoveFocus(first);
}

void ControlSet::ShowKeyboardCues() {
  SendMessageW(window_.handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEACCEL | UISF_HIDEFOCUS), 0);
}

bool ControlSet::NavigationKey(WPARAM key) {
  const bool shift = GetKeyState(VK_SHIFT) < 0, control = GetKeyState(VK_CONTROL) < 0;
  switch (key) {
    case VK_TAB: {
      ShowKeyboardCues();
      if (control) return TurnPage(shift ? -1 : 1);
      MoveFocus(ui::NextControl(form_.layout(), focus_.current(),
                                shift ? ui::Direction::Backward : ui::Direction::Forward));
      return true;
    }
    case VK_PRIOR:
      return control && TurnPage(-1);
    case VK_NEXT:
      return control && TurnPage(1);
    case VK_LEFT:
    case VK_UP:
      return ArrowKey(ui::Direction::Backward);
    case VK_RIGHT:
    case VK_DOWN:
      return ArrowKey(ui::Direction::Forward);
    case VK_RETURN: {
      const bool on_button = focus_.current() && focus_.current()->kind() == ui::Control::Kind::Button;
      PressByKey(on_button ? focus_.current() : form_.default_button);
      return true;
    }
    case VK_F1:
      form_.HelpRequested();
      return true;
    case VK_ESCAPE:
      if (!form_.cancel_button) return form_.EscapePressed();
      PressByKey(form_.cancel_button);
      return true;
    default:
      return false;
  }
}

bool ControlSet::ArrowKey(ui::Direction direction) {
  const ui::Control* const active = focus_.current();
  if (!active || active->kind() != ui::Control::Kind::OptionButton) return false;
  ui::OptionButton* const next =
      ui::NextOption(form_.layout(), static_cast<const ui::OptionButton&>(*active), direction);
  if (next && next != active && MoveFocus(next)) PeerOf(*next)->Press();
  return true;
}

void ControlSet::PressByKey(ui::Control* control) {
  NativePeer* const peer = control && control->Enabled() && control->Visible() ? PeerOf(*control) : nullptr;
  if (peer && MoveFocus(control)) peer->Press();
}

bool ControlSet::TurnPage(int step) {
  ui::Tabs* tabs = nullptr;
  if (focus_.current()) {
    const auto around = ui::PagesAround(form_.layout(), *focus_.current());
    if (!around.empty()) tabs = around.back().tabs;
  }
  for (const auto& peer : peers_)
    if (!tabs && peer->control().kind() == ui::Control::Kind::Tabs)
      tabs = &static_cast<ui::Tabs&>(peer->control());
  if (!tabs) return false;
  const auto count = static_cast<int>(tabs->Captions().size());
  BringToFront(*tabs, static_cast<std::size_t>((static_cast<int>(tabs->Selected()) + step + count) % count));
  return true;
}

void ControlSet::BringToFront(ui::Tabs& tabs, std::size_t page) {
  // First leave the field on the current page; its message may keep that page in front.
  const bool to_first_field = focus_.current() != &tabs;
  if (!MoveFocus(&tabs)) return;
  tabs.Select(page);
  if (closed_ || !to_first_field) return;
  ui::Control* const first = ui::NextControl(form_.layout(), &tabs, ui::Direction::Forward);
  if (first && !ui::PagesAround(form_.layout(), *first).empty()) MoveFocus(first);
}

bool ControlSet::AcceleratorKey(char32_t letter) {
  if (form_.HandleAccelerator(letter)) return true;
  if (closed_) return true;
  const auto found = ui::FindAccelerator(form_.layout(), letter, focus_.current());
  if (!found) return false;
  if (found->page) {
    BringToFront(static_cast<ui::Tabs&>(*found->control), *found->page);
    return true;
  }
  if (!MoveFocus(found->control)) return true;
  NativePeer* const peer = PeerOf(*found->control);
  if (found->only_one || found->control->kind() == ui::Control::Kind::OptionButton) peer->Press();
  return true;
}

}  // namespace windows
