#pragma once

#include <windows.h>

#include <memory>

namespace windows {

struct HandleCloser {
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};

/// Owns a handle of the system; null where the call that should have made it failed.
using Handle = std::unique_ptr<void, HandleCloser>;

inline Handle Own(HANDLE made) noexcept { return Handle(made == INVALID_HANDLE_VALUE ? nullptr : made); }

}  // namespace windows
