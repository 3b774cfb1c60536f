#pragma once

#include <windows.h>

#include <oleauto.h>
#include <unknwn.h>

#include <concepts>
#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "windows/com/wide_text.h"

namespace windows {

struct HandleCloser {
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};

/// Owns a system handle; null if its creation failed.
using Handle = std::unique_ptr<void, HandleCloser>;

inline Handle Own(HANDLE made) noexcept { return Handle(made == INVALID_HANDLE_VALUE ? nullptr : made); }

}  // namespace windows

namespace windows::com {

/// One reference to a COM object; a copy is another reference.
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

  /// Takes over the caller's reference.
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

  /// Releases ownership of the reference.
  [[nodiscard]] T* Detach() noexcept { return std::exchange(pointer_, nullptr); }

  /// For a call to store the reference it returns.
  [[nodiscard]] T** Receive() noexcept {
    Reset();
    return &pointer_;
  }
  [[nodiscard]] void** ReceiveVoid() noexcept { return reinterpret_cast<void**>(Receive()); }

  /// Another interface of the same object; null if it has none.
  template <class Other>
  ComPtr<Other> As(const IID& id = __uuidof(Other)) const noexcept {
    ComPtr<Other> other;
    if (!pointer_ || FAILED(pointer_->QueryInterface(id, other.ReceiveVoid()))) return nullptr;
    return other;
  }

 private:
  T* pointer_ = nullptr;
};

/// Creates an object of one of our COM classes, which start with one reference.
template <class T, class... Arguments>
ComPtr<T> Make(Arguments&&... arguments) {
  return ComPtr<T>::Adopt(new T(std::forward<Arguments>(arguments)...));
}

/// Owns a system string. Null is the empty text.
class Bstr {
 public:
  Bstr() = default;
  explicit Bstr(std::wstring_view text)
      : string_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (!string_) throw std::bad_alloc();
  }
  explicit Bstr(std::string_view utf8) : Bstr(std::wstring_view(ToWide(utf8))) {}
  Bstr(Bstr&& other) noexcept : string_(other.Detach()) {}
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(string_, other.string_);
    return *this;
  }
  ~Bstr() { SysFreeString(string_); }

  BSTR get() const noexcept { return string_; }
  [[nodiscard]] BSTR* Receive() noexcept {
    SysFreeString(std::exchange(string_, nullptr));
    return &string_;
  }
  [[nodiscard]] BSTR Detach() noexcept { return std::exchange(string_, nullptr); }

 private:
  BSTR string_ = nullptr;
};

inline std::string TextOf(BSTR string) {
  return ToUtf8(std::wstring_view(string ? string : L"", SysStringLen(string)));
}

/// Owns what a VARIANT refers to.
class Variant {
 public:
  Variant() noexcept { VariantInit(&variant_); }
  Variant(Variant&& other) noexcept : variant_(other.Detach()) {}
  Variant& operator=(Variant&& other) noexcept {
    std::swap(variant_, other.variant_);
    return *this;
  }
  ~Variant() { VariantClear(&variant_); }

  VARIANT* get() noexcept { return &variant_; }
  const VARIANT* get() const noexcept { return &variant_; }
  VARIANT* operator->() noexcept { return &variant_; }
  const VARIANT* operator->() const noexcept { return &variant_; }

  [[nodiscard]] VARIANT Detach() noexcept {
    VARIANT empty;
    VariantInit(&empty);
    return std::exchange(variant_, empty);
  }

 private:
  VARIANT variant_;
};

/// Owns the texts of a failed call.
class ExceptionInfo {
 public:
  ExceptionInfo() = default;
  ExceptionInfo(const ExceptionInfo&) = delete;
  ExceptionInfo& operator=(const ExceptionInfo&) = delete;
  ~ExceptionInfo() {
    SysFreeString(info_.bstrSource);
    SysFreeString(info_.bstrDescription);
    SysFreeString(info_.bstrHelpFile);
  }

  EXCEPINFO* get() noexcept { return &info_; }
  const EXCEPINFO* operator->() const noexcept { return &info_; }

 private:
  EXCEPINFO info_{};
};

}  // namespace windows::com
