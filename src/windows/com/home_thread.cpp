#include "windows/com/home_thread.h"

#include <memory>
#include <utility>

#include "windows/com/failure.h"

namespace windows::com {
namespace {

constexpr wchar_t kClass[] = L"HomeThread";
constexpr UINT kRelease = WM_APP;
constexpr UINT kDo = WM_APP + 1;

using Work = std::function<void()>;

thread_local HWND window_of_this_thread = nullptr;

/// A window, because the loops of message boxes and menus deliver a window's messages but lose a thread's.
LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == kRelease)
    reinterpret_cast<IUnknown*>(lparam)->Release();
  else if (message == kDo)
    (*std::unique_ptr<Work>(reinterpret_cast<Work*>(lparam)))();
  else
    return DefWindowProcW(window, message, wparam, lparam);
  return 0;
}

HWND MakeWindow() {
  WNDCLASSEXW window{};
  window.cbSize = sizeof window;
  window.lpfnWndProc = Procedure;
  window.hInstance = GetModuleHandleW(nullptr);
  window.lpszClassName = kClass;
  RegisterClassExW(&window);  // fails on later threads, harmlessly
  const HWND made =
      CreateWindowExW(0, kClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, window.hInstance, nullptr);
  if (!made) Check(HRESULT_FROM_WIN32(GetLastError()), "Cannot receive messages");
  return made;
}

std::atomic<long> uses = 0;

std::function<void()>& UnusedHandler() {
  static std::function<void()> handler;
  return handler;
}

}  // namespace

HomeThread::HomeThread() noexcept : thread_(GetCurrentThreadId()), window_(window_of_this_thread) {}

void HomeThread::Do(Work work) const {
  auto posted = std::make_unique<Work>(std::move(work));
  if (PostMessageW(window_, kDo, 0, reinterpret_cast<LPARAM>(posted.get())))
    static_cast<void>(posted.release());
}

bool HomeThread::TakesOver(IUnknown* reference) const noexcept {
  if (!IsAway()) return false;
  // If the home thread has ended, this leaks the reference, because our code must not run on COM's threads.
  // The object's resources ended with the apartment.
  PostMessageW(window_, kRelease, 0, reinterpret_cast<LPARAM>(reference));
  return true;
}

HomeThread::Window::Window() : window_(MakeWindow()), outer_(std::exchange(window_of_this_thread, window_)) {}

HomeThread::Window::~Window() {
  DoAll();
  window_of_this_thread = outer_;
  DestroyWindow(window_);
}

void HomeThread::Window::DoAll() noexcept {
  MSG message;
  while (PeekMessageW(&message, window_, kRelease, kDo, PM_REMOVE)) DispatchMessageW(&message);
}

ServerUse::ServerUse() { ++uses; }

ServerUse::~ServerUse() {
  if (--uses == 0 && UnusedHandler()) UnusedHandler()();
}

long ServerUse::count() { return uses; }

void ServerUse::WhenUnused(std::function<void()> notify) { UnusedHandler() = std::move(notify); }

}  // namespace windows::com
