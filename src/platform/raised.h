#pragma once

namespace platform {

/// Raises a flag while it lives, then restores the flag's former value.
class Raised {
 public:
  explicit Raised(bool& flag) : flag_(flag), former_(flag) { flag = true; }
  ~Raised() { flag_ = former_; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

 private:
  bool& flag_;
  bool former_;
};

}  // namespace platform
