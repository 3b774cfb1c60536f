#pragma once

#include <windows.h>

#include <string>

namespace windows {

/// The text on the clipboard; empty where there is none.
std::wstring ClipboardText(HWND owner);

/// Puts a text on the clipboard. Throws while another program keeps hold of it.
void PutOnClipboard(const std::wstring& text);

}  // namespace windows
