// An automation server with one member, "Version", and a window without anything in it where the command line
// asks for one: "/window <width> <height>". What the plug-in's start and memory are compared with.

#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <memory>

#include "windows/com/local_server.h"
#include "windows/com/registration.h"
#include "windows/com/wide_text.h"

namespace {

using windows::com::ServerStart;

constexpr CLSID kClass{0x0b8f6a51, 0x3b0e, 0x4a1c, {0x9a, 0x53, 0x6d, 0x0e, 0x84, 0x2c, 0x11, 0x7e}};

struct Empty : automation::PublishedTable<Empty> {
  static std::span<const automation::MemberRow<Empty>> Members() {
    static const automation::MemberRow<Empty> kMembers[] = {
        {1, "Version", [](Empty&, platform::Arguments) -> platform::Value { return std::string("1.0.0"); }}};
    return kMembers;
  }
};

int ShowWindowOnly(int width, int height) {
  InitCommonControls();
  WNDCLASSW window_class{};
  window_class.lpfnWndProc = [](HWND window, UINT message, WPARAM wparam, LPARAM lparam) -> LRESULT {
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wparam, lparam);
  };
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  window_class.lpszClassName = L"QM5REmptyWindow";
  RegisterClassW(&window_class);
  CreateWindowW(window_class.lpszClassName, L"Empty window", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20, width,
                height, nullptr, nullptr, window_class.hInstance, nullptr);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR command_line, int) {
  int width = 0, height = 0;
  if (std::swscanf(command_line, L"/window %d %d", &width, &height) == 2)
    return ShowWindowOnly(width, height);
  const windows::com::ServerRegistration registration{kClass, "QM5RBench.Empty", "Empty automation server"};
  switch (windows::com::ServerStartOf(windows::ToUtf8(command_line))) {
    case ServerStart::Register:
      windows::com::RegisterServer(registration);
      return 0;
    case ServerStart::Unregister:
      windows::com::UnregisterServer(registration);
      return 0;
    default:
      const windows::com::Apartment apartment;
      windows::com::LocalServer server({kClass, [] { return std::make_shared<Empty>(); }}, {});
      return server.Run();
  }
}
