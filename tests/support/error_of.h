#pragma once

#include <functional>

#include "platform/error.h"

/// The error that a step throws; number 0 if it throws none.
inline platform::Error ErrorOf(const std::function<void()>& step) {
  try {
    step();
  } catch (const platform::Error& error) {
    return error;
  }
  return {0, "", ""};
}
