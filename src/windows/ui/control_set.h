#pragma once

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "ui/form.h"
#include "ui/keyboard.h"
#include "ui/layout_engine.h"
#include "windows/ui/native_peer.h"
#include "windows/ui/surface.h"
#include "windows/ui/theme.h"

namespace windows {

/// The controls of one form's window: their peers, places, focus and keyboard order.
class ControlSet final : public PeerHost, private ui::Metrics {
 public:
  ControlSet(Surface& window, ui::Form& form);
  ~ControlSet() override;

  /// Measures the controls. Their windows are created when they are first shown.
  void Create();
  /// The form's window is about to be shown.
  void Appear();
  /// Creates all windows, for programs that read them from outside.
  void MakeAllWindows();
  /// Shows the controls with another theme. The next call of Arrange arranges them.
  void TakeTheme(std::shared_ptr<const Theme> theme);
  /// Passes a message about the system's colours, fonts or theme to all child windows and the tooltips.
  void HandOn(UINT message, WPARAM wparam, LPARAM lparam) const;
  ui::Extent Minimum() const { return engine_->Minimum(); }
  /// The size for which they were last arranged.
  ui::Extent room() const { return room_; }
  /// Arranges the controls in a window with this room inside its frame; what does not fit can be scrolled.
  void Arrange(ui::Extent room);
  void Scroll(int bar, WORD request);
  void TurnWheel(int delta);
  /// Detaches the peers from the controls. The form gets no more notifications.
  void Close();

  /// For a window that becomes active, or is left for another window.
  void RestoreFocus();
  void SaveFocus();

  NativePeer* PeerOf(const ui::Control& control) const;
  /// A mouse message for the window or one of its children.
  void RelayToToolTips(MSG& message) const;

  // PeerHost
  UiThread& ui_thread() const override { return window_.ui_thread(); }
  const Theme& theme() const override { return *theme_; }
  bool closed() const override { return closed_; }
  void Arrived(NativePeer& peer) override;
  bool PressMayGoOn(NativePeer& peer) override;
  void TakeFocus(NativePeer& peer) override;
  void MoveOn(NativePeer& peer) override;
  bool NavigationKey(WPARAM key) override;
  bool AcceleratorKey(char32_t letter) override;
  void ShowKeyboardCues() override;
  void Selected(ui::OptionButton& option) override;
  void ShowToolTip(NativePeer& peer) override;
  void Relayout() override;
  void PageAppears(Surface& page) override;
  void NeedWindow(NativePeer& peer) override { MakeWindowsOn(peer.parent()); }

 private:
  // Metrics
  ui::Extent PreferredSize(const ui::Control& control) const override;
  ui::Insets FrameInsets(const ui::Control& frame, bool nested) const override;
  ui::Insets TabInsets(const ui::Control& tabs) const override;
  int Margin() const override { return Gap(10); }
  int ControlGap() const override { return Gap(7); }
  int GroupGap() const override { return Gap(10); }
  double TwipsPerPixel() const override { return 1440.0 / theme().dpi(); }
  ui::Extent Frame() const override { return FrameOf(window_.handle()); }

  void MakePeers(const ui::Box& box, Surface& parent, bool nested);
  void MakePages(const ui::Box& box, Surface& parent);
  std::unique_ptr<NativePeer> MakePeer(ui::Control& control, Surface& parent, bool nested);
  void MakeWindowsOn(const Surface& surface);
  /// A gap in pixels at 96 dots per inch.
  int Gap(int pixels) const { return theme().Scaled(is_tight_ ? pixels / 2 : pixels); }
  void MakeToolTips();
  void FitToolTips() const;
  void MeasureLayout();

  void PlaceAll();
  void Reveal(const NativePeer& peer);
  bool MoveFocus(NativePeer& peer);
  bool MoveFocus(ui::Control* control);
  void PressByKey(ui::Control* control);
  bool TurnPage(int step);
  void BringToFront(ui::Tabs& tabs, std::size_t page);
  bool ArrowKey(ui::Direction direction);

  Surface& window_;
  ui::Form& form_;
  std::shared_ptr<const Theme> theme_;
  bool closed_ = false;
  bool appeared_ = false;
  /// The screen is too small for the normal gaps.
  bool is_tight_ = false;
  ui::FocusTracker focus_;
  std::vector<std::unique_ptr<NativePeer>> peers_;
  std::unordered_map<const ui::Control*, NativePeer*> by_control_;
  std::optional<ui::LayoutEngine> engine_;
  ui::Extent room_;
  ScrollBars bars_;
  bool fitting_bars_ = false;
  HWND saved_focus_ = nullptr;
  HWND tool_tips_ = nullptr;
};

}  // namespace windows
