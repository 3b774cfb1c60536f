#pragma once

#include <windows.h>

#include <unknwn.h>

#include <concepts>
#include <cstddef>
#include <utility>

namespace windows::com {

/// One reference to a COM object; a copy is a further reference.
template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(std::nullptr_t) {}
  explicit ComPtr(T* shared) noexcept : pointer_(shared) {
    if (pointer_) pointer_->AddRef();
  }
  ComPtr(const ComPtr& other) noexcept : ComPtr(other.pointer_) {}
  ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  template <class Derived>
  requires std::convertible_to<Derived*, T*> ComPtr(ComPtr<Derived> derived)
  noexcept : pointer_(derived.Detach()) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~ComPtr() { Reset(); }

  /// Takes over a reference that the caller owns.
  static ComPtr Adopt(T* owned) noexcept {
    ComPtr pointer;
    pointer.pointer_ = owned;
    return pointer;
  }

  T* get() const noexcept { return pointer_; }
  T* operator->() const noexcept { return pointer_; }
  explicit operator bool() const noexcept { return pointer_ != nullptr; }

  void Reset() noexcept {
    if (T* last = std::exchange(pointer_, nullptr)) last->Release();
  }

  /// Gives the reference away.
  [[nodiscard]] T* Detach() noexcept { return std::exchange(pointer_, nullptr); }

  /// Where a call stores the reference that it returns.
  [[nodiscard]] T** Receive() noexcept {
    Reset();
    return &pointer_;
  }
  [[nodiscard]] void** ReceiveVoid() noexcept { return reinterpret_cast<void**>(Receive()); }

  /// Another interface of the same object, null where it has none.
  template <class Other>
  ComPtr<Other> As(const IID& id = __uuidof(Other)) const noexcept {
    ComPtr<Other> other;
    if (!pointer_ || FAILED(pointer_->QueryInterface(id, other.ReceiveVoid()))) return nullptr;
    return other;
  }

 private:
  T* pointer_ = nullptr;
};

/// A new object of one of our own COM classes, which are born with the reference of their maker.
template <class T, class... Arguments>
ComPtr<T> Make(Arguments&&... arguments) {
  return ComPtr<T>::Adopt(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace windows::com
