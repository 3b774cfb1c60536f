#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// Windows of another program, read from outside as a screen reader does. To read lists, tabs and status
/// bars, whose messages carry addresses, the other program must have the same bitness.
namespace windows {

std::string TextOf(HWND window);
std::wstring ClassOf(HWND window);
bool Is(HWND window, const wchar_t* class_name);
/// The direct child windows, in order.
std::vector<HWND> ChildrenOf(HWND window);

std::vector<std::string> TabCaptions(HWND tab);
std::vector<std::string> StatusTexts(HWND status_bar);
/// The cells of a report list, row by row.
std::vector<std::vector<std::string>> ListRows(HWND list);

}  // namespace windows
