#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "ui/desktop.h"
#include "ui/form.h"

namespace headless {

/// A screen without pixels, which answers message boxes from a script and records what is shown.
class Desktop : public ui::Desktop {
 public:
  struct Shown {
    ui::Message message;
    ui::Answer answer;
  };

  std::vector<Shown> messages;
  std::deque<ui::Answer> answers;  // if empty, a box is closed with its first button
  std::vector<ui::Pointer> pointers;
  std::function<void()> on_yield;
  std::function<void(const ui::Message&)> on_message;
  int windows = 0;
  /// The forms with a window, newest last.
  std::vector<ui::Form*> forms;
  int repaints = 0;
  /// The number of times a window was brought to the front.
  int raised = 0;
  bool ended = false;
  double twips_per_pixel = 15;
  bool can_animate = true;
  /// Without a display no windows can be created.
  bool has_display = true;

  std::unique_ptr<ui::FormWindow> MakeWindow(ui::Form& form) override {
    if (!has_display) throw std::runtime_error("no display");
    struct Window : ui::FormWindow {
      Window(Desktop& desktop, ui::Form& form) : screen(desktop), shown(form) { Wake(); }
      ~Window() override { Rest(); }
      void Wake() final {
        ++screen.windows;
        screen.forms.push_back(&shown);
      }
      void Rest() final { screen.windows -= static_cast<int>(std::erase(screen.forms, &shown)); }
      void UpdateCaption() override {}
      void UpdateBounds() override {}
      void UpdateState() override {}
      void Activate() override { ++screen.raised; }
      void Repaint() override {}
      std::uintptr_t hwnd() const override { return reinterpret_cast<std::uintptr_t>(this); }
      Size BestSize() const override { return {9000, 6000}; }
      Desktop& screen;
      ui::Form& shown;
    };
    return std::make_unique<Window>(*this, form);
  }

  std::unique_ptr<ui::AnimationWindow> MakeAnimation(std::uintptr_t, const ui::AnimationStyle&) override {
    struct Animation : ui::AnimationWindow {
      Opened OpenResource(const std::string& module_path, std::int32_t resource) override {
        if (module_path.find("missing") != std::string::npos) return Opened::ModuleMissing;
        return resource == 201 ? Opened::Yes : Opened::ClipMissing;
      }
      Opened OpenFile(const std::string&) override { return Opened::ClipMissing; }
      void Show() override {}
      void Play() override {}
      void Close() override {}
      std::int32_t Width() const override { return 64; }
      std::int32_t Height() const override { return 48; }
      std::uintptr_t hwnd() const override { return reinterpret_cast<std::uintptr_t>(this); }
    };
    if (!can_animate) return nullptr;
    return std::make_unique<Animation>();
  }

  ui::Answer ShowMessage(const ui::Message& message) override {
    if (on_message) on_message(message);
    ui::Answer answer = message.buttons == ui::Buttons::YesNo ? ui::Answer::Yes : ui::Answer::Ok;
    if (!answers.empty()) {
      answer = answers.front();
      answers.pop_front();
    }
    messages.push_back({message, answer});
    return answer;
  }

  std::optional<std::string> AskSaveFile(const ui::SaveDialog& dialog) override {
    save_dialogs.push_back(dialog);
    if (on_file_dialog) on_file_dialog();
    return save_path;
  }
  std::vector<ui::SaveDialog> save_dialogs;
  std::optional<std::string> save_path;

  std::optional<std::string> AskOpenFile(const ui::OpenDialog& dialog) override {
    open_dialogs.push_back(dialog);
    if (on_file_dialog) on_file_dialog();
    return open_path;
  }
  std::function<void()> on_file_dialog;
  std::vector<ui::OpenDialog> open_dialogs;
  std::optional<std::string> open_path;

  std::optional<std::size_t> ChooseFromMenu(ui::HasWindow&,
                                            const std::vector<std::string>& captions) override {
    menus.push_back(captions);
    return std::exchange(from_menu, std::nullopt);
  }
  std::vector<std::vector<std::string>> menus;
  /// The item to choose from the next menu.
  std::optional<std::size_t> from_menu;

  void RunWhileVisible(ui::Form& form) override {
    if (on_modal) on_modal(form);
    form.Hide();
  }
  /// What the user does in a form that is shown over another one; then it is closed.
  std::function<void(ui::Form&)> on_modal;

  void CopyText(const std::string& text) override { copied = text; }
  std::string copied;

  bool ShowHelp(const std::string& file, int context) override {
    help_shown.emplace_back(file, context);
    return true;
  }
  std::vector<std::pair<std::string, int>> help_shown;

  void Yield() override {
    for (auto step = Waiting(); step; step = Waiting()) step();
    if (on_yield) on_yield();
  }
  /// Runs a step on the forms' thread: at once if called there, otherwise when that thread processes
  /// messages.
  void RunAtHome(std::function<void()> step) {
    if (std::this_thread::get_id() == home_) return step();
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(step));
  }
  void SetPointer(ui::Pointer pointer) override { pointers.push_back(pointer); }
  void RepaintActiveWindow() override {
    if (std::this_thread::get_id() != home_) throw std::logic_error("painted from another thread");
    ++repaints;
  }
  double TwipsPerPixelX() const override { return twips_per_pixel; }
  double TwipsPerPixelY() const override { return twips_per_pixel; }
  Area WorkArea() const override { return work_area; }
  Area work_area{0, 0, 1280 * 15, 1024 * 15};
  void EndProgram() override { ended = true; }

 private:
  std::function<void()> Waiting() {
    const std::lock_guard lock(mutex_);
    if (waiting_.empty()) return {};
    auto step = std::move(waiting_.front());
    waiting_.pop_front();
    return step;
  }

  const std::thread::id home_ = std::this_thread::get_id();
  std::mutex mutex_;
  std::deque<std::function<void()>> waiting_;
};

}  // namespace headless
