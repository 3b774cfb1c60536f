#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "windows/com/wide_text.h"
#include "windows/ui/pictures.h"
#include "windows/ui/simple_peers.h"

namespace windows {

void ButtonPeer::MakeWindow() {
  Create(L"BUTTON", ToWide(button().Text()),
         static_cast<DWORD>((is_default_ ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON) | (HasPicture() ? BS_ICON : 0)));
}

bool ButtonPeer::HasPicture() const { return button().picture != ui::Button::Picture::None; }

void ButtonPeer::Rescale() {
  ControlPeer::Rescale();
  if (button().shield) Send(BCM_SETSHIELD, 0, TRUE);
  if (!HasPicture()) return;
  const Picture picture = button().picture == ui::Button::Picture::Help ? Picture::Help : Picture::List;
  OwnedIcon drawn = DrawPicture(picture, look().Scaled(16));
  Send(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(drawn.get()));
  picture_ = std::move(drawn);  // only now nobody shows the former one
}

ui::Extent ButtonPeer::PreferredSize() const {
  const int height = look().TextHeight() + look().Scaled(12);
  if (HasPicture()) return {height + look().Scaled(10), height};
  const ui::Extent text = look().TextSize(ToWide(button().Text()), Look::Weight::Normal, true);
  const int shield = button().shield ? look().Scaled(20) : 0;
  return {std::max(text.width + shield + look().Scaled(24), look().Scaled(84)), height};
}

void ButtonPeer::Command(WORD notification) {
  if (notification == BN_CLICKED) button().UserClicks();
}

void ButtonPeer::Press() { button().UserClicks(); }

void MarkPeer::MakeWindow() {
  Create(L"BUTTON", ToWide(control().Text()), static_cast<DWORD>(option() ? BS_RADIOBUTTON : BS_CHECKBOX));
  if (option()) Send(BM_SETDONTCLICK, TRUE);  // the focus alone chooses nothing
  ShowMark();
}

ui::OptionButton* MarkPeer::option() const {
  return control().kind() == ui::Control::Kind::OptionButton ? static_cast<ui::OptionButton*>(&control())
                                                             : nullptr;
}

ui::Extent MarkPeer::PreferredSize() const {
  const ui::Extent text = look().TextSize(ToWide(control().Text()), Look::Weight::Normal, true);
  return {text.width + look().Scaled(24), std::max(text.height, look().Scaled(13)) + look().Scaled(4)};
}

void MarkPeer::ShowMark() const {
  const bool set = option() ? option()->Selected() : static_cast<const ui::CheckBox&>(control()).Checked();
  Send(BM_SETCHECK, set ? BST_CHECKED : BST_UNCHECKED);
}

void MarkPeer::Update(ui::Aspect aspect) {
  ControlPeer::Update(aspect);
  if (aspect == ui::Aspect::Selection && option() && option()->Selected()) host().Selected(*option());
}

void MarkPeer::Show(ui::Aspect aspect) {
  if (aspect == ui::Aspect::Selection)
    ShowMark();
  else
    ControlPeer::Show(aspect);
}

void MarkPeer::Command(WORD notification) {
  if (notification == BN_CLICKED) Press();
}

void MarkPeer::Press() {
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
