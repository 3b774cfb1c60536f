#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>

#include "../real_input.h"
#include "model/configuration_screen.h"
#include "support/conditions.h"
#include "ui/form.h"
#include "ui/progress.h"
#include "windows/com/wide_text.h"
#include "windows/ui/desktop.h"

class ScreenForm : public ui::Form {
 public:
  explicit ScreenForm(ui::Desktop& screen_desktop);

  model::ConfigurationScreen screen;
  ui::Label heading{"heading", "R&D template"};
  ui::Label note{"note", "Note"};
  ui::Frame units{"units", "Plug-In Display Units"};
  ui::OptionButton metric{"metric", "&Metric"}, imperial{"imperial", "&Imperial"};
  ui::Button apply{"apply", "&Apply"}, options{"options", "&Options of this window"}, help{"help", ""};
  ui::Frame on_error{"on_error", "A caption wider than what is below"};
  ui::CheckBox show{"show", "Show on error"};
  ui::ImageList marks{{"Red", ui::ImageList::Picture::RedMark}, {"Green", ui::ImageList::Picture::GreenMark}};
  ui::ListView log{"log", {"Time", "Action", "Results"}};
  ui::StatusBar bar{"bar", 2};

  std::function<bool(ui::CloseReason)> on_query_unload;
  std::function<void()> on_escape;
  /// Cuts nothing, even if the screen is smaller.
  ui::FormWindow::Size best;

 protected:
  ui::FormWindow::Size FirstSize(ui::FormWindow::Size size) override { return best = size; }
  bool OnQueryUnload(ui::CloseReason reason) override { return !on_query_unload || on_query_unload(reason); }
  bool OnEscape() override { return on_escape && (on_escape(), true); }
};

class WindowsUiTest : public testing::Test {
 public:
  /// The descendants with this class, in order; all if it is empty.
  static std::vector<HWND> Children(HWND parent, const std::wstring& window_class = L"");
  static HWND Child(HWND parent, const std::wstring& text);

 protected:
  explicit WindowsUiTest(int dpi = 96);

  /// Processes messages until the condition holds. False if it does not within a few seconds.
  bool Until(const std::function<bool()>& condition);
  void Settle() { desktop.Yield(); }

  HWND WindowOf(const ui::Form& form) const;
  bool Activate(ui::Form& form);
  void Press(const std::vector<WORD>& keys, bool first_key_up_first = false) {
    PressKeys(keys, first_key_up_first);
    Settle();
  }
  void Click(HWND window) {
    ClickWindow(window);
    Settle();
  }

  std::vector<std::string> failures;
  windows::WindowsDesktop desktop;
};

std::wstring ClassOf(HWND window);
std::wstring TextOf(HWND window);
RECT ScreenPlace(HWND window);
