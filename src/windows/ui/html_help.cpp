#include "windows/ui/html_help.h"

namespace windows {
namespace {

// Commands of the viewer.
constexpr UINT kDisplayTopic = 0;
constexpr UINT kHelpContext = 15;
constexpr UINT kCloseAll = 18;

}  // namespace

bool HtmlHelp::ShowContext(const std::wstring& file, DWORD context) {
  if (!call_) {
    // Never freed: the viewer's windows run its code until the program ends.
    const HMODULE viewer = LoadLibraryW(L"hhctrl.ocx");
    if (viewer)
      call_ = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(viewer, "HtmlHelpW")));
  }
  // Some viewers ask the user for a file that is not there.
  if (!call_ || GetFileAttributesW(file.c_str()) == INVALID_FILE_ATTRIBUTES) return false;
  return call_(nullptr, file.c_str(), context == 0 ? kDisplayTopic : kHelpContext, context) != nullptr;
}

void HtmlHelp::CloseAll() {
  if (call_) call_(nullptr, nullptr, kCloseAll, 0);
}

}  // namespace windows
