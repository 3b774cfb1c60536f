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
    Operations,  // of the object server and of the machine
    Object,      // the object of the operation, for good
    Server,      // the object server with all its objects, for good; another one can be made at the end
  };
  const char* name;
  std::int32_t number;
  Reach reach = Reach::Operations;
  std::size_t length = 1;  // how many operations fail in a row
  bool done = false;       // what was asked is done, and only the answer fails
};

/// Stands between a plug-in and its surroundings, counts what it asks of them, and makes the n-th operation
/// fail.
class Faults {
 public:
  explicit Faults(PlugIn& plug_in);
  Faults(const Faults&) = delete;
  Faults& operator=(const Faults&) = delete;

  /// Counts from here on. The first operation is number 1; with `first` 0 none fails.
  void Begin(const Failure& failure, std::size_t first);
  void End();
  /// Lets dead objects and former object servers go.
  void Forget();

  std::size_t seen() const { return seen_; }
  /// The first operation that failed: the name of its member, or "machine". Empty where none did.
  const std::string& struck() const { return struck_; }
  /// How many objects of the object server the plug-in holds.
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
  int server_ = 0;  // how many were lost before the present one
  platform::LateBoundPtr dead_;
  int held_ = 0;
  // Keeps each session, so that it can be seen what the plug-in has left open.
  std::vector<platform::LateBoundPtr> object_servers_;
};

}  // namespace headless
