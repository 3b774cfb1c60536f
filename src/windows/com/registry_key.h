#pragma once

#include <windows.h>

#include <memory>

namespace windows::com {

struct KeyCloser {
  using pointer = HKEY;
  void operator()(HKEY key) const noexcept { RegCloseKey(key); }
};

/// Owns an open key of the registry.
using Key = std::unique_ptr<HKEY, KeyCloser>;

}  // namespace windows::com
