#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "platform/late_bound.h"

namespace headless {

/// Passes every call to another object: the base of classes that watch, delay or fail calls between the
/// plug-in and an object server. One subclass covers the whole object model: objects in an answer or an event
/// are wrapped too, and unwrapped when they are passed back.
///
/// An object reached twice has two wrappers.
class ForwardingObject : public platform::LateBound, public std::enable_shared_from_this<ForwardingObject> {
 public:
  platform::Value Invoke(const platform::Member& member, platform::CallKind kind,
                         platform::Arguments arguments) final {
    std::vector<platform::Value> unwrapped(arguments.begin(), arguments.end());
    for (platform::Value& value : unwrapped)
      if (const auto* object = std::get_if<platform::LateBoundPtr>(&value))
        if (const auto* forwarding = dynamic_cast<const ForwardingObject*>(object->get()))
          value = platform::LateBoundPtr(forwarding->inner_);
    return Wrapped(Forward(member, kind, unwrapped));
  }
  std::unique_ptr<platform::Subscription> Advise(platform::EventHandler handler) final {
    return ForwardAdvise([self = weak_from_this(), handler = std::move(handler)](
                             std::int32_t event, platform::Arguments arguments) {
      const auto object = self.lock();
      if (!object) return;  // a subscription may outlive its object
      std::vector<platform::Value> wrapped;
      for (const platform::Value& value : arguments) wrapped.push_back(object->Wrapped(value));
      handler(event, wrapped);
    });
  }

 protected:
  explicit ForwardingObject(platform::LateBoundPtr inner) : inner_(std::move(inner)) {}

  /// Subclasses override these to add their work to each call.
  virtual platform::Value Forward(const platform::Member& member, platform::CallKind kind,
                                  platform::Arguments arguments) {
    return inner_->Invoke(member, kind, arguments);
  }
  virtual std::unique_ptr<platform::Subscription> ForwardAdvise(platform::EventHandler handler) {
    return inner_->Advise(std::move(handler));
  }
  /// Wraps an object from an answer or an event.
  virtual platform::LateBoundPtr Another(platform::LateBoundPtr inner) = 0;

  const platform::LateBoundPtr& inner() const { return inner_; }

 private:
  platform::Value Wrapped(const platform::Value& value) {
    const auto* object = std::get_if<platform::LateBoundPtr>(&value);
    return object && *object ? platform::Value(Another(*object)) : value;
  }

  platform::LateBoundPtr inner_;
};

}  // namespace headless
