#pragma once

#include <windows.h>

#include <unknwn.h>

namespace windows::com {

/// The thread on which an object ends: the one that made it, where all that it touches lives.
///
/// COM may release the last reference on a thread of its own. Wine does so where a client releases an object
/// within that object's call.
class HomeThread {
 public:
  /// The thread that runs this.
  HomeThread() noexcept;

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

    /// Releases what has been taken over so far.
    void ReleaseAll() noexcept;

   private:
    const HWND window_;
    const HWND outer_;
  };

 private:
  DWORD thread_;
  HWND window_;
};

}  // namespace windows::com
