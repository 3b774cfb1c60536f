#include "headless/forwarding_object.h"

#include <vector>

namespace headless {

using platform::Arguments;
using platform::LateBoundPtr;
using platform::Value;

Value ForwardingObject::Invoke(const platform::Member& member, platform::CallKind kind, Arguments arguments) {
  std::vector<Value> unwrapped(arguments.begin(), arguments.end());
  for (Value& value : unwrapped)
    if (const auto* object = std::get_if<LateBoundPtr>(&value))
      if (const auto* forwarding = dynamic_cast<const ForwardingObject*>(object->get()))
        value = LateBoundPtr(forwarding->inner_);
  return Wrapped(Forward(member, kind, unwrapped));
}

std::unique_ptr<platform::Subscription> ForwardingObject::Advise(platform::EventHandler handler) {
  return ForwardAdvise(
      [self = weak_from_this(), handler = std::move(handler)](std::int32_t event, Arguments arguments) {
        const auto object = self.lock();
        if (!object) return;  // a subscription may outlive its object
        std::vector<Value> wrapped;
        for (const Value& value : arguments) wrapped.push_back(object->Wrapped(value));
        handler(event, wrapped);
      });
}

Value ForwardingObject::Wrapped(const Value& value) {
  const auto* object = std::get_if<LateBoundPtr>(&value);
  return object && *object ? Value(Another(*object)) : value;
}

}  // namespace headless
