#pragma once

#include <string>

#include "platform/program.h"
#include "ui/animation.h"
#include "ui/controls.h"
#include "ui/form.h"

namespace ui {

/// The progress window: one line of status text under a playing animation, while a long operation runs.
class fProgress : public Form {
 public:
  /// The caption is the plug-in's name.
  fProgress(Desktop& desktop, const platform::Program& program, std::string plug_in_name);

  AnimationHost picResAnim{"picResAnim"};
  Label Status{"Status"};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  std::string plug_in_name_;
  cAnimControl animation_;
};

}  // namespace ui
