#pragma once

#include <exception>
#include <functional>
#include <memory>

#include "ui/desktop.h"

#undef Yield  // the system's macro

namespace windows {

class UiThread;

/// The user's screen on Windows.
///
/// Created and used on the user-interface thread, before any form; outlives the forms' windows. Exceptions of
/// a form's handlers are caught at the window procedure and passed to `on_failure`; the program continues.
class WindowsDesktop final : public ui::Desktop {
 public:
  struct Settings {
    /// Dots per inch for twips, and for fonts and gaps of new windows; 0 for the system's.
    int dpi = 0;
    /// Called for a failure; if empty, a message box shows it.
    std::function<void(const std::exception&)> on_failure = nullptr;
    /// Ends the program; if empty, the message loop ends.
    std::function<void()> end_program = nullptr;
  };
  WindowsDesktop();
  explicit WindowsDesktop(Settings settings);
  ~WindowsDesktop() override;

  /// Runs the message loop until EndProgram; returns the program's exit code.
  int Run();

  std::unique_ptr<ui::FormWindow> MakeWindow(ui::Form& form) override;
  std::unique_ptr<ui::AnimationWindow> MakeAnimation(std::uintptr_t owner,
                                                     const ui::AnimationStyle& style) override;
  ui::Answer ShowMessage(const ui::Message& message) override;
  std::optional<std::string> AskSaveFile(const ui::SaveDialog& dialog) override;
  std::optional<std::string> AskOpenFile(const ui::OpenDialog& dialog) override;
  std::optional<std::size_t> ChooseFromMenu(ui::HasWindow& button,
                                            const std::vector<std::string>& captions) override;
  void RunWhileVisible(ui::Form& form) override;
  void CopyText(const std::string& text) override;
  bool ShowHelp(const std::string& file, int context) override;
  void Yield() override;
  void SetPointer(ui::Pointer pointer) override;
  void RepaintActiveWindow() override;
  double TwipsPerPixelX() const override;
  double TwipsPerPixelY() const override;
  Area WorkArea() const override;
  void EndProgram() override;

 private:
  std::function<void()> end_program_;
  std::unique_ptr<UiThread> ui_thread_;
};

}  // namespace windows
