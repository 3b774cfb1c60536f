#pragma once

#include <windows.h>

#include <string>

#include "ui/controls.h"
#include "ui/layout_engine.h"
#include "windows/ui/ui_thread.h"

namespace windows {

class NativePeer;
class Surface;

/// The interface of a form's window to its controls' windows.
class PeerHost {
 public:
  virtual ~PeerHost() = default;
  virtual UiThread& ui_thread() const = 0;
  /// Fonts and measures of the window; replaced after a change of resolution or font.
  virtual const Theme& theme() const = 0;
  /// The form has closed; neither the form nor its controls may be used.
  virtual bool closed() const = 0;

  virtual void Arrived(NativePeer& peer) = 0;
  /// A mouse press on a control: moves the focus to it first. False if this showed a message or moved the
  /// focus elsewhere, so that the press must have no effect.
  virtual bool PressMayGoOn(NativePeer& peer) = 0;
  virtual void TakeFocus(NativePeer& peer) = 0;
  /// The control cannot keep the focus.
  virtual void MoveOn(NativePeer& peer) = 0;

  /// Handles a navigation key. True if it was used.
  virtual bool NavigationKey(WPARAM key) = 0;
  virtual bool AcceleratorKey(char32_t letter) = 0;
  virtual void ShowKeyboardCues() = 0;

  virtual void Selected(ui::OptionButton& option) = 0;
  virtual void ShowToolTip(NativePeer& peer) = 0;
  /// A text may no longer fit its control.
  virtual void Relayout() = 0;
  /// A page comes to the front; the controls on it need their windows now.
  virtual void PageAppears(Surface& page) = 0;
  /// The control needs its window although it is not visible yet.
  virtual void NeedWindow(NativePeer& peer) = 0;
};

/// Shows one portable control in a system window and reports the user's actions to it. Each kind of control
/// has its own derived class; none contains rules of the program.
///
/// The window is created when it is first shown. Until then the peer knows only size and place; all other
/// state is in the control.
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

  /// Creates the window, if necessary, and shows the control's state in it.
  void Make();
  /// Null before the window is created.
  HWND handle() const { return handle_; }
  Surface& parent() const { return parent_; }
  ui::Control& control() const { return *control_; }
  /// The control exists and its form is open.
  bool alive() const { return control_ && !host_.closed(); }
  void Detach();

  /// The colour behind the control.
  void StandOn(int system_color) { backdrop_ = system_color; }

  /// Uses the window's theme, initially and after it was replaced. A call of Place follows.
  void TakeTheme();
  virtual ui::Extent PreferredSize() const = 0;
  /// What surrounds the content of a frame or a page.
  virtual ui::Insets Insets() const { return {}; }
  /// The rectangle is in the form's client area. The batch moves several children of one parent at once.
  void Place(const ui::Rectangle& rectangle, HDWP& batch);
  const ui::Rectangle& place() const { return place_; }

  void Update(ui::Aspect aspect) override;
  void TakeFocus() override { host_.TakeFocus(*this); }
  void ControlGone() override { control_ = nullptr; }
  std::uintptr_t hwnd() override {
    host_.NeedWindow(*this);
    return reinterpret_cast<std::uintptr_t>(handle_);
  }

  // Messages that the parent passes on.
  virtual void Command(WORD) {}
  virtual LRESULT Notify(NMHDR&) { return 0; }
  virtual void Draw(const DRAWITEMSTRUCT&) {}
  virtual HBRUSH Colors(HDC dc);

  /// The focus has moved here from another control of the window.
  virtual void Prepare() {}
  /// A key for a child of the control's window that does not pass on navigation keys. True if it was used.
  virtual bool UseKey(MSG&) { return false; }
  /// Acts like a press of the button, for accelerators and default keys.
  virtual void Press() {}

 protected:
  virtual void MakeWindow() = 0;
  void Create(const wchar_t* window_class, const std::wstring& text, DWORD style, DWORD extended_style = 0);
  /// Measures with the theme what PreferredSize needs.
  virtual void Measure() {}
  /// Updates what depends only on the theme.
  virtual void Rescale();
  /// Updates what depends on the place, or on place and theme.
  virtual void OnPlaced() {}
  /// Shows a changed part of the control in the window.
  virtual void Show(ui::Aspect aspect);
  virtual LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);
  /// For frequent changes: calls CatchUp now if the window is visible, or otherwise before the window handles
  /// its next message, such as one to paint or to return its text.
  void CatchUpWhenSeen();
  virtual void CatchUp() {}
  /// The window is about to be destroyed with its content; the control may no longer exist.
  virtual void Destroying() {}
  LRESULT Default(UINT message, WPARAM wparam, LPARAM lparam);
  /// The result for a key that the control does not handle. The system must still get Alt combinations;
  /// otherwise it treats Alt as pressed alone and activates the window's menu.
  LRESULT TakenKey(UINT message, WPARAM wparam, LPARAM lparam) const;
  LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const;
  virtual Theme::Weight weight() const { return Theme::Weight::Normal; }
  /// The text colour on a background: the normal one, or the control's mark.
  COLORREF TextColor(int background) const;
  std::wstring WindowText() const;

  PeerHost& host() const { return host_; }
  const Theme& theme() const { return host_.theme(); }
  int backdrop() const { return backdrop_; }

 private:
  /// The control may need another place or size.
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

/// The KeyState bits of the keys held down now.
int HeldKeys();

}  // namespace windows
