#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace windows {

struct MenuItem {
  std::wstring caption;  // "&" marks the letter; a key stands behind a tab
  bool enabled = true;
};

/// Lets the user choose from a menu that opens where WM_CONTEXTMENU says: at the pointer or, for the
/// keyboard, at the corner of the window. The index of the item; nothing where none was chosen.
std::optional<std::size_t> ChooseFromMenu(HWND window, LPARAM where, const std::vector<MenuItem>& items);

}  // namespace windows
