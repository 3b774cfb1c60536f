#pragma once

#include <windows.h>

#include <oaidl.h>
#include <unknwn.h>

#include <atomic>
#include <functional>

namespace windows::com {

/// The thread that created an object, and on which the object and all it uses work and end.
///
/// COM may release the last reference on its own thread; Wine does so if a client releases an object within
/// that object's call. Controls may raise events on their own threads.
class HomeThread {
 public:
  /// The current thread.
  HomeThread() noexcept;

  /// The current thread is another one. Always false for objects created outside an Apartment.
  bool IsAway() const noexcept { return window_ && GetCurrentThreadId() != thread_; }

  /// Runs the work, which must not throw, when the home thread processes messages, at the latest when it
  /// leaves its apartment. If the home thread has ended, drops the work.
  void Do(std::function<void()> work) const;

  /// Takes over a reference from another thread, for the home thread to release when it processes messages,
  /// at the latest when it leaves its apartment. False if the caller must release it: on the home thread, and
  /// for objects created outside an Apartment.
  bool TakesOver(IUnknown* reference) const noexcept;

  /// Makes a thread a home while its owner, the Apartment, exists.
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

/// Keeps this process in use; every adapter and every enumeration has one.
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

// COM's interfaces have no virtual destructor; their objects are only released.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// A reference-counted COM object with these interfaces; the first is its identity. It ends on the thread
/// that created it.
template <class First, class... More>
class Implements : public First, public More... {
 public:
  Implements() = default;
  Implements(const Implements&) = delete;
  Implements& operator=(const Implements&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** interface_pointer) override {
    if (!interface_pointer) return E_POINTER;
    *interface_pointer = Find(id);
    if (!*interface_pointer) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    ULONG held = references_;
    do {
      if (held == 1 && home_.TakesOver(static_cast<First*>(this))) return 0;
    } while (!references_.compare_exchange_weak(held, held - 1));
    if (held == 1) delete this;
    return held - 1;
  }

 protected:
  virtual ~Implements() = default;

  const HomeThread& home() const noexcept { return home_; }

  /// The interface with this identifier, without a new reference; null if there is none.
  virtual void* Find(REFIID id) noexcept {
    if (id == __uuidof(IUnknown) || id == __uuidof(First)) return static_cast<First*>(this);
    void* found = nullptr;
    ((id == __uuidof(More) ? void(found = static_cast<More*>(this)) : void()), ...);
    return found;
  }

 private:
  std::atomic<ULONG> references_ = 1;
  const HomeThread home_;
};

/// IDispatch of an object that is called by number only, such as a sink of events.
template <class Base>
class CalledByNumber : public Base {
 public:
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (count) *count = 0;
    return count ? S_OK : E_POINTER;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** type_info) override {
    if (type_info) *type_info = nullptr;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
};

#pragma GCC diagnostic pop

}  // namespace windows::com
