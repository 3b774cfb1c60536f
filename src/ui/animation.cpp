#include "ui/animation.h"

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

}  // namespace ui
