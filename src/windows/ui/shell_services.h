#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace windows {

/// The text on the clipboard; empty if there is none.
std::wstring ClipboardText(HWND owner);

/// Copies a text to the clipboard. Throws while another program keeps the clipboard open.
void PutOnClipboard(const std::wstring& text);

/// An item without a caption is a separator.
struct MenuItem {
  std::wstring caption;  // "&" marks the accelerator; a key follows a tab
  bool enabled = true;
};

/// Shows a menu at the place in WM_CONTEXTMENU: the pointer or, for the keyboard, below the window, so that
/// the text of a field stays in view. Returns the index of the chosen item, or nothing.
std::optional<std::size_t> ChooseFromMenu(HWND window, LPARAM where, const std::vector<MenuItem>& items);

/// Such a place at a point of the window.
LPARAM PlaceIn(HWND window, POINT point);

/// Shows such a menu with one item per text and copies the chosen text. False if there are no texts.
bool OfferToCopy(HWND window, LPARAM where, const std::vector<std::string>& texts);

/// The system's viewer of help files, loaded when first needed.
class HtmlHelp {
 public:
  /// Opens the file at the topic of a context number, or at its first topic for 0, in a separate window.
  /// False if the system has no viewer or the viewer cannot show the file.
  bool ShowContext(const std::wstring& file, DWORD context);
  /// Closes the help windows, which the viewer requires before the program ends.
  void CloseAll();

 private:
  using Function = HWND(WINAPI*)(HWND caller, const wchar_t* file, UINT command, DWORD_PTR data);
  Function call_ = nullptr;
};

}  // namespace windows
