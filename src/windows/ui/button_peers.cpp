#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "windows/com/wide_text.h"
#include "windows/ui/peers.h"
#include "windows/ui/picture_peer.h"

namespace windows {
namespace {

/// A button with a caption, or with a picture drawn for the resolution.
class ButtonPeer final : public NativePeer {
 public:
  ButtonPeer(PeerHost& host, Surface& parent, ui::Control& button, bool is_default)
      : NativePeer(host, parent, button), is_default_(is_default) {}

  ui::Extent PreferredSize() const override {
    const int height = theme().TextHeight() + theme().Scaled(12);
    if (HasPicture()) return {height + theme().Scaled(10), height};
    const ui::Extent text = theme().TextSize(ToWide(button().Text()), Theme::Weight::Normal, true);
    const int shield = button().shield ? theme().Scaled(20) : 0;
    return {std::max(text.width + shield + theme().Scaled(24), theme().Scaled(84)), height};
  }

  void Command(WORD notification) override {
    if (notification == BN_CLICKED) button().UserClicks();
  }

  void Press() override { button().UserClicks(); }

 protected:
  void MakeWindow() override {
    Create(
        L"BUTTON", ToWide(button().Text()),
        static_cast<DWORD>((is_default_ ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON) | (HasPicture() ? BS_ICON : 0)));
  }

  void Rescale() override {
    NativePeer::Rescale();
    if (button().shield) Send(BCM_SETSHIELD, 0, TRUE);
    if (!HasPicture()) return;
    OwnedIcon drawn = DrawPicture(DrawnPicture(), theme().Scaled(16));
    Send(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(drawn.get()));
    picture_ = std::move(drawn);  // frees the previous picture, which the button no longer shows
  }

 private:
  ui::Button& button() const { return static_cast<ui::Button&>(control()); }
  bool HasPicture() const { return button().picture != ui::Button::Picture::None; }
  Picture DrawnPicture() const {
    switch (button().picture) {
      case ui::Button::Picture::Log:
        return Picture::List;
      case ui::Button::Picture::Settings:
        return Picture::Folder;
      default:
        return Picture::Help;
    }
  }
  const bool is_default_;
  OwnedIcon picture_;
};

/// An option button or a check box.
class ToggleButtonPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;

  ui::Extent PreferredSize() const override {
    const ui::Extent text = theme().TextSize(ToWide(control().Text()), Theme::Weight::Normal, true);
    return {text.width + theme().Scaled(24), std::max(text.height, theme().Scaled(13)) + theme().Scaled(4)};
  }

  void Update(ui::Aspect aspect) override {
    NativePeer::Update(aspect);
    if (aspect == ui::Aspect::Selection && option() && option()->Selected()) host().Selected(*option());
  }

  void Command(WORD notification) override {
    if (notification == BN_CLICKED) Press();
  }

  void Press() override {
    if (ui::OptionButton* const chosen = option()) {
      chosen->SetSelected(true);
      chosen->UserClicks();
      return;
    }
    auto& box = static_cast<ui::CheckBox&>(control());
    box.UserChecks(!box.Checked());
    ShowMark();
  }

 protected:
  void MakeWindow() override {
    Create(L"BUTTON", ToWide(control().Text()), static_cast<DWORD>(option() ? BS_RADIOBUTTON : BS_CHECKBOX));
    if (option()) Send(BM_SETDONTCLICK, TRUE);  // getting the focus selects nothing
    ShowMark();
  }

  void Show(ui::Aspect aspect) override {
    if (aspect == ui::Aspect::Selection)
      ShowMark();
    else
      NativePeer::Show(aspect);
  }

 private:
  ui::OptionButton* option() const {
    return control().kind() == ui::Control::Kind::OptionButton ? static_cast<ui::OptionButton*>(&control())
                                                               : nullptr;
  }

  void ShowMark() const {
    const bool set = option() ? option()->Selected() : static_cast<const ui::CheckBox&>(control()).Checked();
    Send(BM_SETCHECK, set ? BST_CHECKED : BST_UNCHECKED);
  }
};

}  // namespace

std::unique_ptr<NativePeer> MakeButton(PeerHost& host, Surface& parent, ui::Control& control,
                                       bool is_default) {
  return std::make_unique<ButtonPeer>(host, parent, control, is_default);
}

std::unique_ptr<NativePeer> MakeToggleButton(PeerHost& host, Surface& parent, ui::Control& control) {
  return std::make_unique<ToggleButtonPeer>(host, parent, control);
}

}  // namespace windows
