#pragma once

namespace platform {

/// Raises a flag for as long as it lives, and then gives it back the value that it had.
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
