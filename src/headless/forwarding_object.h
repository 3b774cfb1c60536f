#pragma once

#include <memory>
#include <utility>

#include "platform/late_bound.h"

namespace headless {

/// Passes every call on to another object: the base of what stands between the plug-in and an object server
/// and watches, delays or fails. One subclass covers the whole object model, because the objects in an answer
/// or an event come out forwarded in the same way, and go back in as themselves.
///
/// An object reached twice is forwarded by two of these.
class ForwardingObject : public platform::LateBound, public std::enable_shared_from_this<ForwardingObject> {
 public:
  platform::Value Invoke(const platform::Member& member, platform::CallKind kind,
                         platform::Arguments arguments) final;
  std::unique_ptr<platform::Subscription> Advise(platform::EventHandler handler) final;

 protected:
  explicit ForwardingObject(platform::LateBoundPtr inner) : inner_(std::move(inner)) {}

  /// What is done with each call, for a subclass to surround.
  virtual platform::Value Forward(const platform::Member& member, platform::CallKind kind,
                                  platform::Arguments arguments) {
    return inner_->Invoke(member, kind, arguments);
  }
  virtual std::unique_ptr<platform::Subscription> ForwardAdvise(platform::EventHandler handler) {
    return inner_->Advise(std::move(handler));
  }
  /// Forwards another object, which came in an answer or an event.
  virtual platform::LateBoundPtr Another(platform::LateBoundPtr inner) = 0;

  const platform::LateBoundPtr& inner() const { return inner_; }

 private:
  platform::Value Wrapped(const platform::Value& value);

  platform::LateBoundPtr inner_;
};

}  // namespace headless
