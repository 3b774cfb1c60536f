#pragma once

#include <windows.h>

#include <unknwn.h>

#include <functional>

namespace windows::com {

/// The thread that made an object and on which it works and ends, as do the objects it uses.
///
/// COM may release the last reference on its own thread; Wine does so if a client releases an object within
/// that object's call. Controls may raise events on their own threads.
class HomeThread {
 public:
  /// The current thread.
  HomeThread() noexcept;

  /// The current thread is another one. Objects made outside an Apartment are at home everywhere.
  bool IsAway() const noexcept { return window_ && GetCurrentThreadId() != thread_; }

  /// Runs the work, which must not throw, on the home thread when that handles messages, at the latest when
  /// it leaves its apartment. If the home thread has ended, the work is dropped.
  void Do(std::function<void()> work) const;

  /// Takes over a reference from another thread; the home thread releases it when it handles messages, at the
  /// latest when it leaves its apartment. False if the caller must release it: at home, and for objects made
  /// outside an Apartment.
  bool TakesOver(IUnknown* reference) const noexcept;

  /// Makes a thread a home while its owner, the Apartment, lives.
  class Window {
   public:
    Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    ~Window();

    /// Runs the waiting work and releases the references taken over.
    void DoAll() noexcept;

   private:
    const HWND window_;
    const HWND outer_;
  };

 private:
  DWORD thread_;
  HWND window_;
};

/// Keeps this process in use: every adapter and every enumeration holds one.
class ServerUse {
 public:
  ServerUse();
  ServerUse(const ServerUse&) = delete;
  ServerUse& operator=(const ServerUse&) = delete;
  ~ServerUse();

  static long count();

  /// `notify` runs when the last use ends, within the call of the client that ended it; may be empty.
  static void WhenUnused(std::function<void()> notify);
};

}  // namespace windows::com
