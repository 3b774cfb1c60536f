#pragma once

#include <exception>
#include <utility>

namespace platform {

// What a procedure does about a step that may fail, by name; activity::LogAndGoOn is the third way. A failure
// that must stop the procedure is caught by none of them.

/// For a step on which nothing else depends.
template <class Step>
void IgnoreFailure(Step&& step) noexcept {
  try {
    std::forward<Step>(step)();
  } catch (const std::exception&) {
    // The name says it.
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
