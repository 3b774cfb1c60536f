#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "platform/error.h"

namespace platform {

class LateBound;
using LateBoundPtr = std::shared_ptr<LateBound>;

/// A value in an automation call. The empty state is "no value"; a null LateBoundPtr is a reference to no
/// object. Texts are UTF-8.
using Value = std::variant<std::monostate, bool, std::int32_t, double, std::string, LateBoundPtr>;
using Arguments = std::span<const Value>;

/// A member by name or by number. If it has a number, the name only explains it.
struct Member {
  static constexpr std::int32_t kNoNumber = -1;
  std::string_view name;
  std::int32_t number = kNoNumber;
};

/// The default member of automation objects (DISPID_VALUE).
constexpr std::int32_t kDefaultMember = 0;

/// GetOrMethod is how scripts call: a script cannot distinguish a property from a method.
enum class CallKind { Get, Put, PutReference, Method, GetOrMethod };

/// Keeps an event handler connected while it exists. It may outlive the object that raises the events.
class Subscription {
 public:
  virtual ~Subscription() = default;
};

/// Receives the event's number, and its arguments in the order of their declaration. Runs on the thread that
/// connected it, whichever thread raises the event.
using EventHandler = std::function<void(std::int32_t event, Arguments)>;

/// An object known only by the names and numbers of its members. The programs access the object server's
/// objects over COM, the portable tests directly.
///
/// Used from one thread. Every failure is a platform::Error with the number that the object raised.
class LateBound {
 public:
  virtual ~LateBound() = default;

  /// For Put and PutReference the new value is the last argument and the result is empty.
  virtual Value Invoke(const Member& member, CallKind kind, Arguments arguments) = 0;

  /// Connects a handler to the object's default events. Throws kUnknownInterface if it raises none.
  virtual std::unique_ptr<Subscription> Advise(EventHandler handler);
};

inline std::unique_ptr<Subscription> LateBound::Advise(EventHandler) {
  throw Error(kUnknownInterface, "Automation", "The object raises no events.");
}

}  // namespace platform
