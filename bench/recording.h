#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "headless/forwarding_object.h"

namespace bench {

/// The calls that a client makes of an object server, in their order, so that a bare client can make the same
/// ones.
class Recording {
 public:
  /// The object server with every call on it and its objects noted here. The recording outlives it.
  platform::LateBoundPtr Watch(platform::LateBoundPtr object_server);

  std::size_t size() const { return calls_.size(); }

  /// A client that makes the calls and nothing else. It keeps all objects that it is given.
  class Player {
   public:
    Player(const Recording& recording, platform::LateBoundPtr object_server)
        : recording_(recording), objects_{{0, std::move(object_server)}} {}
    /// Makes the calls from the first one up to the last one, which is left out. Failures are passed over, as
    /// they were when they were recorded.
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
    std::vector<std::size_t> object_arguments;  // by position; kNone where the argument is no object
    std::size_t answer = kNone;                 // the object in the answer
  };

  std::vector<Call> calls_;
  std::map<const platform::LateBound*, std::size_t> numbers_;  // of objects that came as an answer
  std::size_t objects_ = 1;
};

}  // namespace bench
