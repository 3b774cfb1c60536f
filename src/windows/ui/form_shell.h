#pragma once

#include <memory>

#include "ui/form.h"
#include "windows/ui/control_set.h"
#include "windows/ui/surface.h"
#include "windows/ui/theme.h"

namespace windows {

/// The top-level window of a form. The form keeps its bounds in twips exactly; the window uses the nearest
/// whole pixels, and reports only changes by the user or the system.
///
/// Owned by the UiThread, which outlives the form's hold on it and describes how a window is destroyed.
class FormShell final : public Surface {
 public:
  FormShell(UiThread& ui_thread, ui::Form& form);
  ~FormShell() override;

  void Create();
  /// The form releases its window.
  void Close();
  bool closed() const { return controls_.closed(); }

  void UpdateCaption();
  void UpdateBounds();
  void UpdateState();
  void Activate();
  void Repaint();
  void Rest();
  ui::FormWindow::Size BestSize() const;
  double BoundsScale() const;

  const Theme& theme() const { return controls_.theme(); }
  NativePeer* PeerOf(const ui::Control& control) const { return controls_.PeerOf(control); }
  void RelayToToolTips(MSG& message) const { controls_.RelayToToolTips(message); }

 protected:
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  /// The form's bounds in pixels.
  RECT FormBounds() const;
  ui::Extent OuterMinimum() const;
  void LimitSize(MINMAXINFO& limits) const;
  /// The window of the form over which this one is shown; null without one.
  HWND Owner() const;
  /// Before it is hidden, so that the owner gets the focus.
  void LetOwnerAct() const;
  void TellBounds();
  void Sized(WPARAM how);
  void ArrangeInside();
  /// Shows everything at a resolution, with the system's current font, in a window that moves to this place.
  void Refit(int dpi, RECT place);
  void RedrawLater();
  void SystemChanged(UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT Activated(WPARAM wparam, LPARAM lparam);
  bool OfferDataTexts(LPARAM where) const;
  bool ShowHourglass(LPARAM lparam) const;

  ui::Form& form_;
  ControlSet controls_;
  bool created_ = false;  // with all its controls
  bool program_moves_ = false;
  WindowIcons icons_;
};

/// A form's hold on its window; destroying it closes the window.
class FormWindowPeer final : public ui::FormWindow {
 public:
  explicit FormWindowPeer(FormShell& shell) : shell_(shell) {}
  ~FormWindowPeer() override;

  void UpdateCaption() override { shell_.UpdateCaption(); }
  void UpdateBounds() override { shell_.UpdateBounds(); }
  void UpdateState() override { shell_.UpdateState(); }
  void Activate() override { shell_.Activate(); }
  void Repaint() override { shell_.Repaint(); }
  void Rest() override { shell_.Rest(); }
  void Wake() override { shell_.UpdateCaption(); }
  std::uintptr_t hwnd() const override { return reinterpret_cast<std::uintptr_t>(shell_.handle()); }
  Size BestSize() const override { return shell_.BestSize(); }
  double BoundsScale() const override { return shell_.BoundsScale(); }

 private:
  FormShell& shell_;
};

}  // namespace windows
