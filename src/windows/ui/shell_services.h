#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace windows {

/// The text on the clipboard; empty if there is none.
std::wstring ClipboardText(HWND owner);

/// Puts a text on the clipboard. Throws while another program keeps hold of it.
void PutOnClipboard(const std::wstring& text);

/// An item without a caption is a separator.
struct MenuItem {
  std::wstring caption;  // "&" marks the letter; a key follows a tab
  bool enabled = true;
};

/// Lets the user choose from a menu that opens at the place in WM_CONTEXTMENU: at the pointer or, for the
/// keyboard, at the corner of the window. The index of the item; nothing if none was chosen.
std::optional<std::size_t> ChooseFromMenu(HWND window, LPARAM where, const std::vector<MenuItem>& items);

/// Opens such a menu with one item for each text, and copies the chosen one. False if there are no texts.
bool OfferToCopy(HWND window, LPARAM where, const std::vector<std::string>& texts);

/// The system's viewer of help files, which is loaded when it is first asked for.
class HtmlHelp {
 public:
  /// Opens the file at the topic of a context number, or at its first one for 0, in a window of its own.
  /// False if the system has no viewer or the viewer cannot show the file.
  bool ShowContext(const std::wstring& file, DWORD context);
  /// Closes the help windows; the viewer wants that before the program ends.
  void CloseAll();

 private:
  using Function = HWND(WINAPI*)(HWND caller, const wchar_t* file, UINT command, DWORD_PTR data);
  Function call_ = nullptr;
};

}  // namespace windows
