#pragma once

namespace platform {

/// Sets a flag while it exists, then restores the previous value.
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
