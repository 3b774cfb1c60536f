#pragma once

#include <optional>
#include <string>

#include "ui/form.h"

namespace xif {

/// A window that is never seen and carries the dialog that asks for an interface file.
class fHidden : public ui::Form {
 public:
  explicit fHidden(ui::Desktop& desktop) : Form(desktop, "fHidden", ui::BorderStyle::FixedSingle) {}

  ui::OpenDialog DlgXIF;

  /// The path of the file chosen; nothing when cancelled.
  std::optional<std::string> AskXif() {
    Load();
    return desktop().AskOpenFile(DlgXIF);
  }
};

}  // namespace xif
