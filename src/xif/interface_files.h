#pragma once

#include <optional>
#include <string>

#include "lonworks/tools.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "registry/registry.h"
#include "ui/desktop.h"
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

/// Devices' external interface files on this computer: finding the one of a program ID, and having its binary
/// form (XFB), which the object server imports, made beside it by the LonWorks tool XIF32BIN.
///
/// One for the process, used from the user-interface thread. Every failure is empty text for the caller.
/// While the tool works the message loop runs.
class InterfaceFiles {
 public:
  InterfaceFiles(ui::Desktop& desktop, const platform::Files& files, platform::Shell& shell,
                 const registry::CRegistry& registry)
      : desktop_(desktop), files_(files), tools_(desktop, shell, registry) {}

  /// Where interface files are looked for, without a backslash at its end; empty where that is unknown.
  std::string folder;

  /// Looks in the folder and all folders below it. The path of the file whose binary form is there.
  std::string FindXifForProgramId(const std::string& program_id);

  /// Asks the user for the file; the folder that it is in becomes `folder`.
  std::string LocateXifByDialog(const std::string& program_id);

  /// Makes sure that the binary form of the file is there, which may take a minute; the message on failure is
  /// shown here. Returns the path, which becomes empty on failure, in the caller's variable too.
  std::string ExportXfb(std::string& xif_path);

 private:
  void RunConverter(const std::string& xif_path, const std::string& xfb_path);

  ui::Desktop& desktop_;
  const platform::Files& files_;
  lonworks::Tools tools_;
};

}  // namespace xif
