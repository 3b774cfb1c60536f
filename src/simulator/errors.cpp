#include "simulator/errors.h"

#include <utility>

#include "platform/error.h"

namespace simulator {

void FailWith(std::uint16_t code, std::string description) {
  throw platform::Error(platform::ObjectServerError(code), "LNS Simulator", std::move(description));
}

void Fail(Code code, std::string description) {
  FailWith(static_cast<std::uint16_t>(code), std::move(description));
}

}  // namespace simulator
