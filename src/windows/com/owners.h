#pragma once

#include <windows.h>

#include <oleauto.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "windows/com/wide_text.h"

namespace windows::com {

/// Owns a system string. The null string is the empty text.
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

/// Owns the texts with which a failed call explains itself.
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
