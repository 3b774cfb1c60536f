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

/// What crosses an automation call. The empty state is "no value"; a null LateBoundPtr is an object reference
/// that refers to nothing. Texts are UTF-8.
using Value = std::variant<std::monostate, bool, std::int32_t, double, std::string, LateBoundPtr>;
using Arguments = std::span<const Value>;

/// A member by name, by number, or by both. Where a number is given the name only explains it.
struct Member {
  static constexpr std::int32_t kNoNumber = -1;
  std::string_view name;
  std::int32_t number = kNoNumber;
};

/// The default member of automation objects (DISPID_VALUE).
constexpr std::int32_t kDefaultMember = 0;

/// GetOrMethod is the call of a script, which cannot tell a property from a method.
enum class CallKind { Get, Put, PutReference, Method, GetOrMethod };

/// Keeps an event handler connected; destroying it disconnects. It may outlive the object that raises the
/// events.
class Subscription {
 public:
  virtual ~Subscription() = default;
};

/// Receives an event by its number, with its arguments in the order of their declaration, on the thread that
/// has connected it, whatever thread raises the event.
using EventHandler = std::function<void(std::int32_t event, Arguments)>;

/// An object known only by the names and numbers of its members: one of the object server's objects, reached
/// over COM in the programs or directly in the portable tests.
///
/// Used from one thread. Every failure is a platform::Error that keeps the number of the side that raised it.
class LateBound {
 public:
  virtual ~LateBound() = default;

  /// Calls a member. For Put and PutReference the new value is the last argument and the result is empty.
  virtual Value Invoke(const Member& member, CallKind kind, Arguments arguments) = 0;

  /// Connects a handler to the object's default events; an Error with kUnknownInterface where it raises none.
  virtual std::unique_ptr<Subscription> Advise(EventHandler handler);
};

inline std::unique_ptr<Subscription> LateBound::Advise(EventHandler) {
  throw Error(kUnknownInterface, "Automation", "The object raises no events.");
}

}  // namespace platform
