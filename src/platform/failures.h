#pragma once

#include <exception>
#include <utility>

namespace platform {

// Named ways to handle a step that may fail; activity::LogAndGoOn is the third. If a failure must stop the
// procedure, use none of them.

/// For a step that nothing else depends on.
template <class Step>
void IgnoreFailure(Step&& step) noexcept {
  try {
    std::forward<Step>(step)();
  } catch (const std::exception&) {
    // Ignored on purpose.
  }
}

/// What `read` returns, or `otherwise` if it fails.
template <class Value, class Read>
Value ValueOr(Value otherwise, Read&& read) noexcept {
  try {
    return std::forward<Read>(read)();
  } catch (const std::exception&) {
    return otherwise;
  }
}

}  // namespace platform
