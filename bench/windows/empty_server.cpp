// Compared with the plug-in's start and memory: an automation server with "Version" and "ShowWindow" (width,
// height), which shows an empty window and holds an object server. "/window <width> <height>" shows the same
// window without automation.

#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <memory>

#include "automation/convert.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/local_server.h"
#include "windows/com/registration.h"
#include "windows/com/wide_text.h"

namespace {

using windows::com::ServerStart;

constexpr CLSID kClass{0x0b8f6a51, 0x3b0e, 0x4a1c, {0x9a, 0x53, 0x6d, 0x0e, 0x84, 0x2c, 0x11, 0x7e}};

void MakeWindow(int width, int height) {
  InitCommonControls();
  WNDCLASSW window_class{};
  window_class.lpfnWndProc = [](HWND window, UINT message, WPARAM wparam, LPARAM lparam) -> LRESULT {
    return DefWindowProcW(window, message, wparam, lparam);
  };
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  window_class.lpszClassName = L"QM5REmptyWindow";
  RegisterClassW(&window_class);
  CreateWindowW(window_class.lpszClassName, L"Empty window", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20, width,
                height, nullptr, nullptr, window_class.hInstance, nullptr);
}

struct Empty : automation::PublishedTable<Empty> {
  static std::span<const automation::MemberRow<Empty>> Members() {
    using platform::Arguments;
    static const Row kMembers[] = {
        Property(1, "Version", [](Empty&) { return std::string("1.0.0"); }),
        Function(
            2, "ShowWindow",
            [](Empty& self, Arguments size) {
              self.object_server = windows::com::CreateObject("LnsSimulator.LcaObjectServer");
              MakeWindow(automation::ToInteger(size[0]), automation::ToInteger(size[1]));
            },
            2)};
    return kMembers;
  }
  platform::LateBoundPtr object_server;
};

int RunWindowOnly(int width, int height) {
  MakeWindow(width, height);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (message.message == WM_CLOSE) return 0;
    DispatchMessageW(&message);
  }
  return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR command_line, int) {
  int width = 0, height = 0;
  if (std::swscanf(command_line, L"/window %d %d", &width, &height) == 2) return RunWindowOnly(width, height);
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
