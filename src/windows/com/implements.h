#pragma once

#include <windows.h>

#include <unknwn.h>

#include <atomic>

#include "windows/com/home_thread.h"

namespace windows::com {

// COM's interfaces have no virtual destructor: their objects are only released.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// A reference-counted COM object with these interfaces; the first is its identity. It ends on the thread
/// that made it.
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

#pragma GCC diagnostic pop

}  // namespace windows::com
