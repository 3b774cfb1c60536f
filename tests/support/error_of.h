#pragma once

#include <functional>

#include "platform/error.h"

/// The error that a step raises; one without a number where it raises none.
inline platform::Error ErrorOf(const std::function<void()>& step) {
  try {
    step();
  } catch (const platform::Error& error) {
    return error;
  }
  return {0, "", ""};
}
