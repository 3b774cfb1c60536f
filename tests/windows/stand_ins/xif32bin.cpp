// XIF32BIN.exe of the tests: given an interface file and the path of its binary form it shows its window,
// writes that file, and says that it has finished until it is closed. XIF32BIN_DOES makes it "fail" at once,
// "hang" or write "nothing". What it writes is the way in which it was told to show itself.

#include <windows.h>

#include <shellapi.h>

#include <string>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int show) {
  wchar_t does[16] = L"";
  GetEnvironmentVariableW(L"XIF32BIN_DOES", does, 16);
  const std::wstring behaviour = does;
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (behaviour == L"fail" || count != 3 || GetFileAttributesW(words[1]) == INVALID_FILE_ATTRIBUTES) return 1;
  const HWND window = CreateWindowW(L"STATIC", L"XIF32BIN", WS_OVERLAPPEDWINDOW, 0, 0, 300, 80, nullptr,
                                    nullptr, nullptr, nullptr);
  ShowWindow(window, show);
  SetTimer(window, 1, 200, nullptr);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (message.message == WM_CLOSE) return 0;
    if (message.message == WM_TIMER && behaviour != L"hang") {
      KillTimer(window, 1);
      if (behaviour != L"nothing") {
        const HANDLE file = CreateFileW(words[2], GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
        const char shown = static_cast<char>('0' + show);
        DWORD written = 0;
        WriteFile(file, &shown, 1, &written, nullptr);
        CloseHandle(file);
      }
      SetWindowTextW(window, L"Finished - XIF32BIN");
    }
    DispatchMessageW(&message);
  }
  return 0;
}
