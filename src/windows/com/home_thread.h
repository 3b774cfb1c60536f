#pragma once

#include <windows.h>

#include <unknwn.h>

#include <functional>

namespace windows::com {

/// The thread on which an object works and ends: the one that made it, where all that it touches lives.
///
/// COM may release the last reference on a thread of its own. Wine does so where a client releases an object
/// within that object's call. Controls may raise events on threads of theirs.
class HomeThread {
 public:
  /// The thread that runs this.
  HomeThread() noexcept;

  /// Whether this is another thread. What was made outside of an Apartment is at home everywhere.
  bool IsAway() const noexcept { return window_ && GetCurrentThreadId() != thread_; }

  /// Has the home thread do something that does not throw when it looks at its messages, at the latest when
  /// it leaves its apartment. Where the home has gone it is not done.
  void Do(std::function<void()> work) const;

  /// Takes a reference over from another thread; the home thread releases it when it looks at its messages,
  /// at the latest when it leaves its apartment. False where the caller has to release it: at home, and for
  /// objects that were made outside of an Apartment.
  bool TakesOver(IUnknown* reference) const noexcept;

  /// What makes a thread a home, for as long as the Apartment that owns it.
  class Window {
   public:
    Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    ~Window();

    /// Does what there is to do, and releases what has been taken over so far.
    void DoAll() noexcept;

   private:
    const HWND window_;
    const HWND outer_;
  };

 private:
  DWORD thread_;
  HWND window_;
};

/// What keeps this process in use by others: every adapter and every enumeration holds one.
class ServerUse {
 public:
  ServerUse();
  ServerUse(const ServerUse&) = delete;
  ServerUse& operator=(const ServerUse&) = delete;
  ~ServerUse();

  static long count();

  /// Called when the last use has ended, within the call of the client that ended it. Empty to be left alone.
  static void WhenUnused(std::function<void()> notify);
};

}  // namespace windows::com
