#include "ui/progress.h"

#include "platform/error.h"

namespace ui {

void cAnimControl::StartPlay() {
  const std::uintptr_t owner = owner_ ? owner_->hwnd() : 0;
  if (hwnd() == 0) window_ = owner ? desktop_.MakeAnimation(owner, {Centre, Transparent, AutoPlay}) : nullptr;
  if (!window_) throw platform::Error(45001, source_, "Could not create Animation Control.");
  Open();
  window_->Play();
}

void cAnimControl::Open() {
  using enum AnimationWindow::Opened;
  if (ResourceId != 0) {
    const auto opened = window_->OpenResource(ResourceFileName, ResourceId);
    if (opened == ModuleMissing)
      throw platform::Error(45003, source_, "Failed to load the resource library '" + ResourceFileName + "'");
    if (opened == ClipMissing)
      throw platform::Error(45002, source_,
                            "Failed to open the AVI from the resource " + std::to_string(ResourceId));
  } else if (!Filename.empty()) {
    if (window_->OpenFile(Filename) != Yes)
      throw platform::Error(45002, source_, "Failed to open the file '" + Filename + "'");
  }
  window_->Show();
}

void cAnimControl::StopPlay() {
  if (window_) window_->Close();
  window_.reset();
}

namespace {

constexpr int kProgressClip = 201;

}  // namespace

fProgress::fProgress(Desktop& desktop, const platform::Program& program, std::string plug_in_name)
    : Form(desktop, "fProgress", BorderStyle::FixedDialog),
      plug_in_name_(std::move(plug_in_name)),
      animation_(desktop, program.ExecutableName()) {
  KeepWindow();
  SetCaption("Plug-in name will be set here at run time");
  Status.shows_data = true;
  Status.lines = 2;
  SetLayout(Box::Column({Box::Leaf(picResAnim).StretchWidth(), Box::Leaf(Status).StretchWidth()}));
  animation_.ResourceId = kProgressClip;
  animation_.ResourceFileName = program.Path();
  animation_.Centre = animation_.Transparent = animation_.AutoPlay = true;
}

void fProgress::OnLoad() {
  Status.SetText({});
  SetCaption(plug_in_name_);
  desktop().SetPointer(Pointer::Hourglass);
  animation_.SetOwner(picResAnim);
  // A clip that cannot play must not stop the operation.
  platform::IgnoreFailure([this] { animation_.StartPlay(); });
}

void fProgress::OnUnload() {
  animation_.StopPlay();
  desktop().SetPointer(Pointer::Default);
}

fProgress& Progress::Open() {
  if (!window_) window_ = std::make_unique<fProgress>(desktop_, program_, plug_in_name_);
  window_->operation_runs = true;
  window_->on_escape = on_escape;
  window_->Show();
  return *window_;
}

void Progress::Show() {
  Open();
  desktop_.Yield();
}

void Progress::DisplayStatus(const std::string& status) {
  Open().Status.SetText(status);
  // What runs here may close the window.
  desktop_.Yield();
}

void Progress::LeaveToUser() {
  if (window_) window_->operation_runs = false;
}

void Progress::Close() {
  if (!window_) return;
  window_->Unload();
}

}  // namespace ui
