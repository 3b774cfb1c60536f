#include "windows/ui/dialogs.h"

#include <commdlg.h>

#include <array>
#include <string>

#include "platform/error.h"
#include "windows/com/wide_text.h"
#include "windows/ui/desktop.h"
#include "windows/ui/form_shell.h"
#include "windows/ui/ui_thread.h"

#undef Yield  // the system's macro

namespace windows {

Modal::Modal(const UiThread& ui_thread) {
  const HWND active = GetActiveWindow();
  for (const auto& shell : ui_thread.shells()) {
    const HWND window = shell->handle();
    if (shell->closed() || !IsWindowVisible(window)) continue;
    if (window == active) {
      owner_ = window;
    } else if (IsWindowEnabled(window)) {
      EnableWindow(window, FALSE);
      disabled_.push_back(window);
    }
  }
}

Modal::~Modal() {
  for (const HWND window : disabled_)
    if (IsWindow(window)) EnableWindow(window, TRUE);
}

namespace {

UINT FlagsOf(const ui::Message& message) {
  UINT flags = message.second_is_default ? MB_DEFBUTTON2 : MB_DEFBUTTON1;
  switch (message.icon) {
    case ui::Icon::None:
      break;
    case ui::Icon::Critical:
      flags |= MB_ICONERROR;
      break;
    case ui::Icon::Question:
      flags |= MB_ICONQUESTION;
      break;
    case ui::Icon::Exclamation:
      flags |= MB_ICONWARNING;
      break;
    case ui::Icon::Information:
      flags |= MB_ICONINFORMATION;
      break;
  }
  switch (message.buttons) {
    case ui::Buttons::Ok:
      return flags | MB_OK;
    case ui::Buttons::OkCancel:
      return flags | MB_OKCANCEL;
    case ui::Buttons::YesNo:
      return flags | MB_YESNO;
  }
  return flags;
}

ui::Answer AnswerOf(int pressed, ui::Buttons buttons) {
  switch (pressed) {
    case IDOK:
      return ui::Answer::Ok;
    case IDYES:
      return ui::Answer::Yes;
    case IDNO:
      return ui::Answer::No;
    default:  // closed
      return buttons == ui::Buttons::Ok      ? ui::Answer::Ok
             : buttons == ui::Buttons::YesNo ? ui::Answer::No
                                             : ui::Answer::Cancel;
  }
}

/// The program's name, as the title of a message without its own title.
std::wstring ProgramName() {
  wchar_t path[MAX_PATH];
  const std::wstring file(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
  const std::wstring name = file.substr(file.find_last_of(L'\\') + 1);
  return name.substr(0, name.find_last_of(L'.'));
}

constexpr std::size_t kLongestPath = 32768;

/// Descriptions and patterns in the dialog's form: each ends with a NUL, patterns have no blanks.
std::wstring DialogFilter(const std::string& filter) {
  std::wstring result;
  bool is_pattern = false;
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = filter.find('|', start);
    std::string piece = filter.substr(start, end == std::string::npos ? end : end - start);
    if (is_pattern) std::erase(piece, ' ');
    result += ToWide(piece) + L'\0';
    is_pattern = !is_pattern;
    if (end == std::string::npos) return result + L'\0';
    start = end + 1;
  }
}

/// Shows one of the system's dialogs; false if cancelled. Loads their library only when needed, because under
/// Wine its printing libraries are an eighth of the plug-in's memory. Never unloads it.
bool ShowDialog(const char* dialog, OPENFILENAMEW& ask) {
  using Function = BOOL(WINAPI*)(OPENFILENAMEW*);
  const HMODULE library = LoadLibraryW(L"comdlg32.dll");
  const auto show = library
                        ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, dialog)))
                        : nullptr;
  if (!show)
    throw platform::Error(static_cast<std::int32_t>(GetLastError()), "Windows",
                          "The file dialog cannot be shown.");
  return show(&ask) != FALSE;
}

}  // namespace

ui::Answer ShowMessageBox(const ui::Message& message, const UiThread& ui_thread) {
  const Modal modal(ui_thread);
  const std::wstring caption = message.caption.empty() ? ProgramName() : ToWide(message.caption);
  // Without an owner it would appear behind the window of the director, which waits for the answer. This
  // modality makes it topmost.
  const UINT flags = FlagsOf(message) | (modal.owner() ? 0 : MB_SYSTEMMODAL | MB_SETFOREGROUND);
  return AnswerOf(MessageBoxW(modal.owner(), ToWide(message.text).c_str(), caption.c_str(), flags),
                  message.buttons);
}

std::optional<std::string> WindowsDesktop::AskSaveFile(const ui::SaveDialog& dialog) {
  const std::wstring filter = DialogFilter(dialog.filter);
  const std::wstring title = ToWide(dialog.title);
  const std::wstring extension =
      ToWide(dialog.default_extension.substr(dialog.default_extension.rfind('.') + 1));
  std::wstring path = ToWide(dialog.file_name);
  path.resize(kLongestPath);
  const Modal modal(*ui_thread_);
  OPENFILENAMEW ask{};
  ask.lStructSize = sizeof ask;
  ask.hwndOwner = modal.owner();
  ask.lpstrFilter = filter.c_str();
  ask.lpstrFile = path.data();
  ask.nMaxFile = kLongestPath;
  ask.lpstrTitle = title.c_str();
  ask.lpstrDefExt = extension.c_str();
  ask.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR;
  if (!ShowDialog("GetSaveFileNameW", ask)) return std::nullopt;
  return ToUtf8(path.c_str());
}

std::optional<std::string> WindowsDesktop::AskOpenFile(const ui::OpenDialog& dialog) {
  const std::wstring filter = DialogFilter(dialog.filter);
  const std::wstring title = ToWide(dialog.title);
  const std::wstring folder = ToWide(dialog.folder);
  std::wstring path(kLongestPath, L'\0');
  const Modal modal(*ui_thread_);
  OPENFILENAMEW ask{};
  ask.lStructSize = sizeof ask;
  ask.hwndOwner = modal.owner();
  ask.lpstrFilter = filter.c_str();
  ask.nFilterIndex = 1;
  ask.lpstrFile = path.data();
  ask.nMaxFile = kLongestPath;
  ask.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
  ask.lpstrTitle = title.c_str();
  ask.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST | OFN_NOCHANGEDIR;
  if (!ShowDialog("GetOpenFileNameW", ask)) return std::nullopt;
  return ToUtf8(path.c_str());
}

}  // namespace windows
