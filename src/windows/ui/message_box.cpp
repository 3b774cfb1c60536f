#include "windows/ui/message_box.h"

#include <string>

#include "windows/com/wide_text.h"
#include "windows/ui/modal.h"

namespace windows {
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

/// The title of a message that has none of its own: the program's name.
std::wstring ProgramName() {
  wchar_t path[MAX_PATH];
  const std::wstring file(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
  const std::wstring name = file.substr(file.find_last_of(L'\\') + 1);
  return name.substr(0, name.find_last_of(L'.'));
}

}  // namespace

ui::Answer ShowMessageBox(const ui::Message& message, const UiThread& ui_thread) {
  const Modal modal(ui_thread);
  const std::wstring caption = message.caption.empty() ? ProgramName() : ToWide(message.caption);
  // Without an owner it would come up behind the window of the director, which waits for the answer: this
  // modality makes it topmost.
  const UINT flags = FlagsOf(message) | (modal.owner() ? 0 : MB_SYSTEMMODAL | MB_SETFOREGROUND);
  return AnswerOf(MessageBoxW(modal.owner(), ToWide(message.text).c_str(), caption.c_str(), flags),
                  message.buttons);
}

}  // namespace windows
