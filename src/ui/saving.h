#pragma once

#include <optional>
#include <string>

#include "platform/files.h"
#include "ui/desktop.h"

namespace ui {

/// Asks where to save a file, and before it replaces one. Nothing if the user does not want to.
std::optional<std::string> AskWhereToSave(Desktop& desktop, const platform::Files& files,
                                          const SaveDialog& dialog, const std::string& title);

}  // namespace ui
