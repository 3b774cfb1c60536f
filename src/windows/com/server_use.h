#pragma once

#include <functional>

namespace windows::com {

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
