#pragma once

#include <windows.h>

#include <oaidl.h>

#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "platform/late_bound.h"
#include "windows/com/owners.h"

namespace windows::com {

/// Events on their way from the threads that raise them to the listener. They are copies, because a source
/// may free the arguments when its call returns.
class EventQueue {
 public:
  struct Event {
    DISPID number;
    /// In the order of DISPPARAMS: the last first.
    std::vector<Variant> arguments;
  };

  /// Works on any thread and does not wait for the listener. Throws an Error if arguments cannot be copied.
  void Add(DISPID number, const DISPPARAMS& parameters);

  /// The next event. Called on the listener's thread.
  std::optional<Event> Next();

  /// Drops waiting and later events.
  void Close();

 private:
  /// An argument or, for an object of the source's apartment, a marshalled reference to it.
  class Argument {
   public:
    explicit Argument(const VARIANT& argument);
    Argument(Argument&&) = default;
    Argument& operator=(Argument&&) = default;
    ~Argument();
    Variant Take();

   private:
    Variant value_;
    ComPtr<IStream> way_;
  };
  struct Waiting {
    DISPID number;
    std::vector<Argument> arguments;
  };

  std::mutex mutex_;
  std::deque<Waiting> waiting_;
  bool closed_ = false;
};

/// Connects a handler to the object's default source interface, or to its first if none is the default. The
/// handler runs on this thread, also while a call waits. Its exceptions reach the source as failures. Events
/// that the source raises on other threads reach the handler in order when this thread processes messages.
///
/// The subscription may outlive the object and its process. Throws kUnknownInterface if the object raises no
/// events.
std::unique_ptr<platform::Subscription> SubscribeToDefaultEvents(IDispatch* object,
                                                                 platform::EventHandler handler);

}  // namespace windows::com
