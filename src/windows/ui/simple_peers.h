#pragma once

#include "windows/ui/native_peer.h"
#include "windows/ui/surface.h"
#include "windows/ui/theme.h"

/// The peers of the controls that do little.
namespace windows {

/// A caption, or a text from the network. The latter is drawn here if it has room for some lines, so that one
/// that is too long keeps its end.
class LabelPeer final : public NativePeer {
 public:
  LabelPeer(PeerHost& host, Surface& parent, ui::Label& label);
  ui::Extent PreferredSize() const override;

 protected:
  void MakeWindow() override;
  void Measure() override;
  void OnPlaced() override;
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  bool DrawsItself() const { return label().shows_data && label().lines > 1; }
  void Paint(HDC dc);
  const ui::Label& label() const { return static_cast<const ui::Label&>(control()); }
  Theme::Weight weight() const override;
  const std::wstring first_text_;
  int first_width_ = 0;
};

/// A button with a caption, or with a picture drawn for the resolution.
class ButtonPeer final : public NativePeer {
 public:
  ButtonPeer(PeerHost& host, Surface& parent, ui::Button& button, bool is_default)
      : NativePeer(host, parent, button), is_default_(is_default) {}
  ui::Extent PreferredSize() const override;
  void Command(WORD notification) override;
  void Press() override;

 protected:
  void MakeWindow() override;
  void Rescale() override;

 private:
  ui::Button& button() const { return static_cast<ui::Button&>(control()); }
  bool HasPicture() const;
  const bool is_default_;
  OwnedIcon picture_;
};

/// An option button or a check box.
class ToggleButtonPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;
  ui::Extent PreferredSize() const override;
  void Update(ui::Aspect aspect) override;
  void Command(WORD notification) override;
  void Press() override;

 protected:
  void MakeWindow() override;
  void Show(ui::Aspect aspect) override;

 private:
  ui::OptionButton* option() const;
  void ShowMark() const;
};

/// A frame: on a page a thin border with a bold caption; inside another frame a caption and a line.
class FramePeer final : public NativePeer {
 public:
  FramePeer(PeerHost& host, Surface& parent, ui::Frame& frame, bool nested)
      : NativePeer(host, parent, frame), nested_(nested) {}
  ui::Extent PreferredSize() const override;
  ui::Insets FrameInsets() const;

 protected:
  void MakeWindow() override;
  void OnPlaced() override;
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  Theme::Weight weight() const override { return nested_ ? Theme::Weight::Normal : Theme::Weight::Bold; }
  void Paint(HDC dc) const;
  void PaintLine(HDC dc, const RECT& area) const;
  const bool nested_;
};

class StatusBarPeer final : public NativePeer {
 public:
  StatusBarPeer(PeerHost& host, Surface& parent, ui::StatusBar& bar, bool grip)
      : NativePeer(host, parent, bar), grip_(grip) {}
  ui::Extent PreferredSize() const override;

 protected:
  void MakeWindow() override;
  void OnPlaced() override;
  void Show(ui::Aspect aspect) override;
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  ui::StatusBar& bar() const { return static_cast<ui::StatusBar&>(control()); }
  void ShowTexts();
  /// The place of the text of a part.
  RECT RoomOf(std::size_t part) const;
  const bool grip_;
  std::vector<std::wstring> shown_;
};

/// A plain area; an animation becomes its child.
class AnimationHostPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;
  ui::Extent PreferredSize() const override;

 protected:
  void MakeWindow() override;
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
};

}  // namespace windows
