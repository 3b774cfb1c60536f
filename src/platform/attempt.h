#pragma once

#include <exception>
#include <utility>

namespace platform {

/// Runs a step that may fail without stopping the procedure around it. True when it ran to its end.
///
/// This is the one way in which the program goes on after a failure; a step that must be reported is not run
/// by it.
template <class Step>
bool Attempt(Step&& step) noexcept {
  try {
    std::forward<Step>(step)();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace platform
