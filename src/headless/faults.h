#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "headless/forwarding_object.h"
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
  using Reach = Failure::Reach;

 public:
  explicit Faults(PlugIn& plug_in) {
    plug_in.in_between = [this](platform::LateBoundPtr object_server) {
      object_servers_.push_back(object_server);
      return std::make_shared<Object>(std::move(object_server), *this, server_);
    };
    const auto fails = [this] { return Strikes("machine", nullptr, server_) && !failure_.done; };
    plug_in.machine.fails = plug_in.files.fails = plug_in.shell.fails = fails;
  }
  Faults(const Faults&) = delete;
  Faults& operator=(const Faults&) = delete;

  /// Starts counting, from 1. If `first` is 0, no operation fails.
  void Begin(const Failure& failure, std::size_t first) {
    failure_ = failure;
    first_ = first;
    counts_ = true;
    seen_ = 0;
    struck_.clear();
  }
  void End() {
    counts_ = false;
    if (failure_.reach == Reach::Server && !struck_.empty()) ++server_;
  }
  /// Releases dead objects and previous object servers.
  void Forget() {
    dead_.reset();
    object_servers_.clear();
  }

  std::size_t seen() const { return seen_; }
  /// The first operation that failed: the name of its member, or "machine"; empty if none failed.
  const std::string& struck() const { return struck_; }
  /// The number of the object server's objects that the plug-in holds.
  int held() const { return held_; }
  bool object_is_dead() const { return dead_ != nullptr; }

 private:
  class Object : public ForwardingObject {
   public:
    Object(platform::LateBoundPtr inner, Faults& faults, int server)
        : ForwardingObject(std::move(inner)), faults_(faults), server_(server) {
      ++faults_.held_;
    }
    ~Object() override { --faults_.held_; }

   private:
    platform::Value Forward(const platform::Member& member, platform::CallKind kind,
                            platform::Arguments arguments) override {
      const bool fails = faults_.Strikes(member.name, inner(), server_);
      if (fails && !faults_.failure_.done) Fail();
      platform::Value result = ForwardingObject::Forward(member, kind, arguments);
      if (fails) Fail();
      return result;
    }
    std::unique_ptr<platform::Subscription> ForwardAdvise(platform::EventHandler handler) override {
      if (faults_.Strikes("Advise", inner(), server_)) Fail();
      return ForwardingObject::ForwardAdvise(std::move(handler));
    }
    platform::LateBoundPtr Another(platform::LateBoundPtr inner) override {
      return std::make_shared<Object>(std::move(inner), faults_, server_);
    }
    [[noreturn]] void Fail() const {
      throw platform::Error(faults_.failure_.number, "Headless", "A fault was set for this operation.");
    }

    Faults& faults_;
    int server_;
  };

  bool Strikes(std::string_view operation, const platform::LateBoundPtr& object, int server) {
    if (server != server_ || (dead_ && object == dead_)) return true;
    if (!counts_) return false;
    ++seen_;
    const std::size_t length = failure_.reach == Reach::Server ? ~first_ : failure_.length;
    if (first_ == 0 || seen_ < first_ || seen_ - first_ >= length) return false;
    // The machine still works without the object server.
    if (!object && failure_.reach != Reach::Operations) return false;
    if (struck_.empty()) struck_ = operation;
    if (failure_.reach == Reach::Object) dead_ = object;
    return true;
  }

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
