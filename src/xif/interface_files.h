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

/// The owner of the dialog that asks for an interface file; never shown.
class fHidden : public ui::Form {
 public:
  explicit fHidden(ui::Desktop& desktop) : Form(desktop, "fHidden", ui::BorderStyle::FixedSingle) {}

  ui::OpenDialog DlgXIF;

  /// The path of the chosen file; nothing if cancelled.
  std::optional<std::string> AskXif() {
    Load();
    return desktop().AskOpenFile(DlgXIF);
  }
};

/// External interface files of devices on this computer: finds the file of a program ID, and runs the
/// LonWorks tool XIF32BIN to create its binary form (XFB) beside it, which the object server imports.
///
/// One per process, used from the user-interface thread. Failures return empty text. The message loop runs
/// while the tool works.
class InterfaceFiles {
 public:
  InterfaceFiles(ui::Desktop& desktop, const platform::Files& files, platform::Shell& shell,
                 const registry::CRegistry& registry)
      : desktop_(desktop), files_(files), tools_(desktop, shell, registry) {}

  /// The folder to search, without a backslash at the end; empty if it is unknown.
  std::string folder;

  /// Searches the folder and all folders below it. Returns the file's path if its binary form exists or can
  /// be created.
  std::string FindXifForProgramId(const std::string& program_id);

  /// Asks the user for the file; its folder becomes `folder`.
  std::string LocateXifByDialog(const std::string& program_id);

  /// Creates a missing binary form, which may take a minute. Shows a message on failure. Returns the path,
  /// which becomes empty on failure, also in the caller's variable.
  std::string ExportXfb(std::string& xif_path);

 private:
  void RunConverter(const std::string& xif_path, const std::string& xfb_path);

  ui::Desktop& desktop_;
  const platform::Files& files_;
  lonworks::Tools tools_;
};

}  // namespace xif
