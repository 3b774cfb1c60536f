#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "headless/forwarding_object.h"

namespace bench {

/// A client's calls of an object server, in order, so that a bare client can make the same calls.
class Recording {
 public:
  /// Wraps the object server to record every call on it and its objects. The recording must outlive it.
  platform::LateBoundPtr Watch(platform::LateBoundPtr object_server);

  std::size_t size() const { return calls_.size(); }

  /// A client that only makes the calls. It keeps all objects it gets.
  class Player {
   public:
    Player(const Recording& recording, platform::LateBoundPtr object_server)
        : recording_(recording), objects_{{0, std::move(object_server)}} {}
    /// Makes the calls from `first` up to, but not including, `last`. Ignores failures, which were also
    /// recorded.
    void Play(std::size_t first, std::size_t last);

   private:
    const Recording& recording_;
    std::map<std::size_t, platform::LateBoundPtr> objects_;
  };

 private:
  class Object;
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  struct Call {
    std::size_t object;
    std::string name;
    std::int32_t number;
    platform::CallKind kind;
    std::vector<platform::Value> arguments;
    std::vector<std::size_t> object_arguments;  // by position; kNone if the argument is not an object
    std::size_t answer = kNone;                 // the object in the answer
  };

  std::vector<Call> calls_;
  std::map<const platform::LateBound*, std::size_t> numbers_;  // of objects from answers
  std::size_t objects_ = 1;
};

}  // namespace bench
