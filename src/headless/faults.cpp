#include "headless/faults.h"

#include <memory>
#include <utility>

#include "headless/forwarding_object.h"

namespace headless {

using platform::LateBoundPtr;
using Reach = Failure::Reach;

class Faults::Object : public ForwardingObject {
 public:
  Object(LateBoundPtr inner, Faults& faults, int server)
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
  LateBoundPtr Another(LateBoundPtr inner) override {
    return std::make_shared<Object>(std::move(inner), faults_, server_);
  }
  [[noreturn]] void Fail() const {
    throw platform::Error(faults_.failure_.number, "Headless", "A fault was set for this operation.");
  }

  Faults& faults_;
  int server_;
};

Faults::Faults(PlugIn& plug_in) {
  plug_in.in_between = [this](LateBoundPtr object_server) {
    object_servers_.push_back(object_server);
    return std::make_shared<Object>(std::move(object_server), *this, server_);
  };
  const auto fails = [this] { return Strikes("machine", nullptr, server_) && !failure_.done; };
  plug_in.machine.fails = plug_in.files.fails = plug_in.shell.fails = fails;
}

void Faults::Begin(const Failure& failure, std::size_t first) {
  failure_ = failure;
  first_ = first;
  counts_ = true;
  seen_ = 0;
  struck_.clear();
}

void Faults::End() {
  counts_ = false;
  if (failure_.reach == Reach::Server && !struck_.empty()) ++server_;
}

void Faults::Forget() {
  dead_.reset();
  object_servers_.clear();
}

bool Faults::Strikes(std::string_view operation, const LateBoundPtr& object, int server) {
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

}  // namespace headless
