#pragma once

#include <windows.h>

#include <string>

#include "ui/controls.h"
#include "ui/layout_engine.h"
#include "windows/ui/ui_thread.h"

namespace windows {

class NativePeer;
class Surface;

/// What a control's window needs from the window around it.
class PeerHost {
 public:
  virtual ~PeerHost() = default;
  virtual UiThread& ui_thread() const = 0;
  /// Fonts and measures of the window; another one after a change of resolution or font.
  virtual const Theme& theme() const = 0;
  /// The form has closed; neither it nor its controls may be touched.
  virtual bool closed() const = 0;

  virtual void Arrived(NativePeer& peer) = 0;
  /// A mouse press on a control: moves the focus to it first. False when that brought up a message or moved
  /// the focus elsewhere, so that the press does nothing.
  virtual bool PressMayGoOn(NativePeer& peer) = 0;
  virtual void TakeFocus(NativePeer& peer) = 0;
  /// The control cannot keep the focus.
  virtual void MoveOn(NativePeer& peer) = 0;

  /// Keys by which the user gets around in the window. True when the key has been used.
  virtual bool NavigationKey(WPARAM key) = 0;
  virtual bool AcceleratorKey(char32_t letter) = 0;
  virtual void ShowKeyboardCues() = 0;

  virtual void Selected(ui::OptionButton& option) = 0;
  virtual void ShowToolTip(NativePeer& peer) = 0;
  /// A text may have outgrown its control.
  virtual void Relayout() = 0;
  /// A page comes to the front; the controls on it need their windows now.
  virtual void PageAppears(Surface& page) = 0;
  /// The control needs its window, though nobody looks at it yet.
  virtual void NeedWindow(NativePeer& peer) = 0;
};

/// Shows one portable control in a window of the system, and reports to the control what the user does. One
/// class for each kind of control derives from it; none holds a rule of the program.
///
/// The window is made when it is first looked at. Until then the peer knows the control's size and
/// place, and what changes waits in the control.
///
/// Owned by the form's shell, which destroys the window first.
class NativePeer : public ui::ControlPeer {
 public:
  NativePeer(PeerHost& host, Surface& parent, ui::Control& control);
  ~NativePeer() override;
  NativePeer(const NativePeer&) = delete;
  NativePeer& operator=(const NativePeer&) = delete;

  /// The peer of a control's window; null for other windows.
  static NativePeer* Of(HWND window);

  /// Makes the window, once, and shows in it what the control holds.
  void Make();
  /// Null before the window is made.
  HWND handle() const { return handle_; }
  Surface& parent() const { return parent_; }
  ui::Control& control() const { return *control_; }
  /// The control exists, and its form is open.
  bool alive() const { return control_ && !host_.closed(); }
  void Detach();

  /// The color of what lies behind the control.
  void StandOn(int system_color) { backdrop_ = system_color; }

  /// Takes over the window's theme; at first, and when the theme has become another one. Place comes next.
  void TakeTheme();
  virtual ui::Extent PreferredSize() const = 0;
  /// What surrounds the content of a frame or a page.
  virtual ui::Insets Insets() const { return {}; }
  /// The rectangle is in the form's client area; the batch, of the parent's children, moves many at once.
  void Place(const ui::Rectangle& rectangle, HDWP& batch);
  const ui::Rectangle& place() const { return place_; }

  void Update(ui::Aspect aspect) override;
  void TakeFocus() override { host_.TakeFocus(*this); }
  void ControlGone() override { control_ = nullptr; }
  std::uintptr_t hwnd() override {
    host_.NeedWindow(*this);
    return reinterpret_cast<std::uintptr_t>(handle_);
  }

  // What the parent hands on.
  virtual void Command(WORD) {}
  virtual LRESULT Notify(NMHDR&) { return 0; }
  virtual void Draw(const DRAWITEMSTRUCT&) {}
  virtual HBRUSH Colors(HDC dc);

  /// The focus has come from another control of the window.
  virtual void Prepare() {}
  /// A key for a window inside the control's own, which does not pass on those by which one gets around. True
  /// when it has been used.
  virtual bool UseKey(MSG&) { return false; }
  /// Acts as if pressed; for accelerators and the keys of the default buttons.
  virtual void Press() {}

 protected:
  virtual void MakeWindow() = 0;
  void Create(const wchar_t* window_class, const std::wstring& text, DWORD style, DWORD extended_style = 0);
  /// Finds out by the theme what PreferredSize needs beside it.
  virtual void Measure() {}
  /// Gives the window what follows from the theme alone.
  virtual void Rescale();
  /// Gives the window what follows from its place, and from the theme with it.
  virtual void OnPlaced() {}
  /// Shows what has changed in the window.
  virtual void Show(ui::Aspect aspect);
  virtual LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);
  /// For what changes often: calls CatchUp now if the window can be seen, and otherwise, as on another page,
  /// before the window gets its next message: to paint, for example, or to return its text.
  void CatchUpWhenSeen();
  virtual void CatchUp() {}
  /// The window is about to go with its content; the control may be gone already.
  virtual void Destroying() {}
  LRESULT Default(UINT message, WPARAM wparam, LPARAM lparam);
  /// For a key that is not for the control: with Alt the system has to hear of it all the same, or it takes
  /// Alt for pressed alone and brings up the window's menu.
  LRESULT TakenKey(UINT message, WPARAM wparam, LPARAM lparam) const;
  LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const;
  virtual Theme::Weight weight() const { return Theme::Weight::Normal; }
  /// The colour of text on a background: the normal one, or the control's mark.
  COLORREF TextColor(int background) const;
  std::wstring WindowText() const;

  PeerHost& host() const { return host_; }
  const Theme& theme() const { return host_.theme(); }
  int backdrop() const { return backdrop_; }

 private:
  /// The control may need another place in the window.
  bool Outgrown(ui::Aspect aspect) const;
  POINT Position() const;
  void CatchUpNow();
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

  PeerHost& host_;
  Surface& parent_;
  ui::Control* control_;
  HWND handle_ = nullptr;
  WNDPROC class_procedure_ = nullptr;
  bool behind_ = false;
  int backdrop_;
  ui::Rectangle place_;
};

/// The platform's KeyState bits of the keys held down now.
int HeldKeys();

}  // namespace windows
