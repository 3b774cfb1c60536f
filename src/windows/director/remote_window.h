#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// Windows of another program, read from outside as a screen reader does. The other program must be of the
/// same bitness where its lists, tabs and status bars are read: their messages carry addresses.
namespace windows {

std::string TextOf(HWND window);
std::wstring ClassOf(HWND window);
bool Is(HWND window, const wchar_t* class_name);
/// The child windows at the next level, in their order.
std::vector<HWND> ChildrenOf(HWND window);

std::vector<std::string> TabCaptions(HWND tab);
std::vector<std::string> StatusTexts(HWND status_bar);
/// The rows of a report list, cell by cell.
std::vector<std::vector<std::string>> ListRows(HWND list);

}  // namespace windows
