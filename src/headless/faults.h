#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "headless/plug_in.h"

namespace headless {

/// How a platform fails.
struct Failure {
  enum class Reach {
    Operations,  // calls of the object server and of the machine
    Object,      // from now on, the object that is called
    Server,      // from now on, the object server with all its objects; a new one works after End()
  };
  const char* name;
  std::int32_t number;
  Reach reach = Reach::Operations;
  std::size_t length = 1;  // the number of consecutive operations that fail
  bool done = false;       // the operation takes effect; only its answer fails
};

/// Placed between a plug-in and its surroundings: counts the plug-in's operations and makes the n-th fail.
class Faults {
 public:
  explicit Faults(PlugIn& plug_in);
  Faults(const Faults&) = delete;
  Faults& operator=(const Faults&) = delete;

  /// Starts counting, from 1. If `first` is 0, no operation fails.
  void Begin(const Failure& failure, std::size_t first);
  void End();
  /// Releases dead objects and previous object servers.
  void Forget();

  std::size_t seen() const { return seen_; }
  /// The first operation that failed: the name of its member, or "machine"; empty if none failed.
  const std::string& struck() const { return struck_; }
  /// The number of the object server's objects that the plug-in holds.
  int held() const { return held_; }
  bool object_is_dead() const { return dead_ != nullptr; }

 private:
  class Object;
  bool Strikes(std::string_view operation, const platform::LateBoundPtr& object, int server);

  Failure failure_{};
  std::size_t first_ = 0;
  bool counts_ = false;
  std::size_t seen_ = 0;
  std::string struck_;
  int server_ = 0;  // the number of servers lost before this one
  platform::LateBoundPtr dead_;
  int held_ = 0;
  // Kept to find what the plug-in left open.
  std::vector<platform::LateBoundPtr> object_servers_;
};

}  // namespace headless
