// The tests' XIF32BIN.exe: shows its window, writes the file in its second argument, and shows that it has
// finished until it is closed. XIF32BIN_DOES makes it "fail", "hang" or write "nothing". The file contains
// the show command that it got.

#include <windows.h>

#include <shellapi.h>

#include <string>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int show) {
  wchar_t does[16] = L"";
  GetEnvironmentVariableW(L"XIF32BIN_DOES", does, 16);
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (does == std::wstring(L"fail") || count != 3) return 1;
  const HWND window = CreateWindowW(L"STATIC", L"XIF32BIN", WS_OVERLAPPEDWINDOW, 0, 0, 9, 9, nullptr, nullptr,
                                    nullptr, nullptr);
  ShowWindow(window, show);
  SetTimer(window, 1, 200, nullptr);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0 && message.message != WM_CLOSE) {
    if (message.message != WM_TIMER || does == std::wstring(L"hang")) continue;
    KillTimer(window, 1);
    const char shown = static_cast<char>('0' + show);
    DWORD written = 0;
    if (does != std::wstring(L"nothing"))
      WriteFile(CreateFileW(words[2], GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW, 0, nullptr),
                &shown, 1, &written, nullptr);
    SetWindowTextW(window, L"Finished - XIF32BIN");
  }
  return 0;
}
