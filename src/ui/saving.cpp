#include "ui/saving.h"

namespace ui {

std::optional<std::string> AskWhereToSave(Desktop& desktop, const platform::Files& files,
                                          const SaveDialog& dialog, const std::string& title) {
  auto path = desktop.AskSaveFile(dialog);
  if (!path || !files.FileExists(*path)) return path;
  if (desktop.ShowMessage({"File already exists, override?", title, Icon::Exclamation, Buttons::OkCancel,
                           /*second_is_default=*/true}) == Answer::Ok)
    return path;
  desktop.ShowMessage({"Action canceled by user", title, Icon::Exclamation});
  return std::nullopt;
}

}  // namespace ui
