#include "ui/form.h"

#include <algorithm>

namespace ui {

Form::Form(Desktop& desktop, std::string name, BorderStyle border)
    : desktop_(desktop), name_(std::move(name)), border_(border) {}

Form::~Form() = default;

void Form::Load() {
  if (window_) return;
  if (kept_) kept_->Wake();
  window_ = kept_ ? std::move(kept_) : desktop_.MakeWindow(*this);
  const FormWindow::Size first = FirstSize(window_->BestSize());
  const double scale = window_->BoundsScale();
  Centre({first.width * scale, first.height * scale});
  OnLoad();
}

void Form::Unload() {
  if (!window_) return;
  OnUnload();
  HideModal();
  visible_ = false;
  active_control_ = former_control_ = nullptr;
  if (keeps_window_) {
    window_->Rest();
    kept_ = std::move(window_);
  }
  window_.reset();
}

bool Form::CloseRequested(CloseReason reason) {
  if (!window_) return true;
  if (!OnQueryUnload(reason)) return false;
  Unload();
  return true;
}

void Form::SetCaption(std::string caption) {
  caption_ = std::move(caption);
  if (window_) window_->UpdateCaption();
}

void Form::SetVisible(bool visible) {
  if (visible) Load();
  if (visible_ == visible) return;
  if (!visible) HideModal();
  visible_ = visible;
  if (window_) window_->UpdateState();
}

void Form::ShowModal(Form& owner) {
  struct Hold {
    ~Hold() {
      form.Unload();
      form.owner_ = over.modal_ = nullptr;
    }
    Form &form, &over;
  };
  owner_ = &owner;
  owner.modal_ = this;
  const Hold hold{*this, owner};
  Show();
  desktop_.RunWhileVisible(*this);
}

void Form::HideModal() {
  if (modal_) modal_->Hide();
}

void Form::BringToFront() {
  if (state_ == WindowState::Minimized) SetState(WindowState::Normal);
  Show();
  window_->Activate();
}

void Form::SetState(WindowState state) {
  state_ = state;
  if (window_) window_->UpdateState();
}

void Form::SetBounds(double left, double top, double width, double height) {
  left_ = left;
  top_ = top;
  width_ = width;
  height_ = height;
  if (window_) window_->UpdateBounds();
  OnResize();
}

void Form::Centre(FormWindow::Size size) {
  const Desktop::Area screen = desktop_.WorkArea();
  const double width = std::min(size.width, screen.width), height = std::min(size.height, screen.height);
  // Over an owner on the screen it is wholly on the screen, too.
  const auto middle = [](double length, double from, double room, double screen_from, double screen_room) {
    const double place = from + (room - length) / 2;
    const bool on_screen = from >= screen_from && from <= screen_from + screen_room;
    return on_screen ? std::clamp(place, screen_from, screen_from + screen_room - length) : place;
  };
  const Desktop::Area over =
      owner_ ? Desktop::Area{owner_->left_, owner_->top_, owner_->width_, owner_->height_} : screen;
  const double left = middle(width, over.left, over.width, screen.left, screen.width);
  const double top = middle(height, over.top, over.height, screen.top, screen.height);
  SetBounds(left, top, width, height);
}

void Form::WindowMoved(double left, double top, double width, double height) {
  const bool resized = width != width_ || height != height_;
  left_ = left;
  top_ = top;
  width_ = width;
  height_ = height;
  if (resized) OnResize();
}

void Form::Repaint() {
  if (window_) window_->Repaint();
}

void Form::ShowHelp(const std::string& file, int context, const std::string& title) {
  if (!desktop_.ShowHelp(file, context))
    desktop_.ShowMessage({"The help file cannot be shown.\r\n\r\n" + file, title, Icon::Exclamation});
}

bool Form::HandleAccelerator(char32_t) { return false; }

}  // namespace ui
