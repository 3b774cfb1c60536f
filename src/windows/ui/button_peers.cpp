#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "windows/com/wide_text.h"
#include "windows/ui/picture_peer.h"
#include "windows/ui/simple_peers.h"

namespace windows {

void ButtonPeer::MakeWindow() {
  Create(L"BUTTON", ToWide(button().Text()),
         static_cast<DWORD>((is_default_ ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON) | (HasPicture() ? BS_ICON : 0)));
}

bool ButtonPeer::HasPicture() const { return button().picture != ui::Button::Picture::None; }

void ButtonPeer::Rescale() {
  NativePeer::Rescale();
  if (button().shield) Send(BCM_SETSHIELD, 0, TRUE);
  if (!HasPicture()) return;
  const Picture picture = button().picture == ui::Button::Picture::Help ? Picture::Help : Picture::List;
  OwnedIcon drawn = DrawPicture(picture, theme().Scaled(16));
  Send(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(drawn.get()));
  picture_ = std::move(drawn);  // only now nobody shows the former one
}

ui::Extent ButtonPeer::PreferredSize() const {
  const int height = theme().TextHeight() + theme().Scaled(12);
  if (HasPicture()) return {height + theme().Scaled(10), height};
  const ui::Extent text = theme().TextSize(ToWide(button().Text()), Theme::Weight::Normal, true);
  const int shield = button().shield ? theme().Scaled(20) : 0;
  return {std::max(text.width + shield + theme().Scaled(24), theme().Scaled(84)), height};
}

void ButtonPeer::Command(WORD notification) {
  if (notification == BN_CLICKED) button().UserClicks();
}

void ButtonPeer::Press() { button().UserClicks(); }

void ToggleButtonPeer::MakeWindow() {
  Create(L"BUTTON", ToWide(control().Text()), static_cast<DWORD>(option() ? BS_RADIOBUTTON : BS_CHECKBOX));
  if (option()) Send(BM_SETDONTCLICK, TRUE);  // the focus alone chooses nothing
  ShowMark();
}

ui::OptionButton* ToggleButtonPeer::option() const {
  return control().kind() == ui::Control::Kind::OptionButton ? static_cast<ui::OptionButton*>(&control())
                                                             : nullptr;
}

ui::Extent ToggleButtonPeer::PreferredSize() const {
  const ui::Extent text = theme().TextSize(ToWide(control().Text()), Theme::Weight::Normal, true);
  return {text.width + theme().Scaled(24), std::max(text.height, theme().Scaled(13)) + theme().Scaled(4)};
}

void ToggleButtonPeer::ShowMark() const {
  const bool set = option() ? option()->Selected() : static_cast<const ui::CheckBox&>(control()).Checked();
  Send(BM_SETCHECK, set ? BST_CHECKED : BST_UNCHECKED);
}

void ToggleButtonPeer::Update(ui::Aspect aspect) {
  NativePeer::Update(aspect);
  if (aspect == ui::Aspect::Selection && option() && option()->Selected()) host().Selected(*option());
}

void ToggleButtonPeer::Show(ui::Aspect aspect) {
  if (aspect == ui::Aspect::Selection)
    ShowMark();
  else
    NativePeer::Show(aspect);
}

void ToggleButtonPeer::Command(WORD notification) {
  if (notification == BN_CLICKED) Press();
}

void ToggleButtonPeer::Press() {
  if (ui::OptionButton* const chosen = option()) {
    chosen->SetSelected(true);
    chosen->UserClicks();
    return;
  }
  auto& box = static_cast<ui::CheckBox&>(control());
  box.UserChecks(!box.Checked());
  ShowMark();
}

}  // namespace windows
