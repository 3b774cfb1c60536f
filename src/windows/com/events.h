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

/// Events on their way from the threads that raise them to the one that listens. What waits here is a copy:
/// a source may take the arguments back when its call returns.
class EventQueue {
 public:
  struct Event {
    DISPID number;
    /// As in DISPPARAMS, the last one first.
    std::vector<Variant> arguments;
  };

  /// On any thread, which does not wait for the listener. An Error for arguments that cannot be copied.
  void Add(DISPID number, const DISPPARAMS& parameters);

  /// The next event, for the thread of the listener.
  std::optional<Event> Next();

  /// Drops what waits, and what is still to come.
  void Close();

 private:
  /// An argument, and where it is an object of the raiser's apartment the way to it.
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

/// Connects a handler to the object's default source interface, or to its first one where it names none. The
/// handler runs on this thread, also inside calls that are out. What it throws goes back to the source as a
/// failure. Events that the source raises on another thread reach the handler when this one looks at its
/// messages, in the order in which they were raised.
///
/// The subscription may outlive the object and its process. An Error with kUnknownInterface where the object
/// raises no events.
std::unique_ptr<platform::Subscription> SubscribeToDefaultEvents(IDispatch* object,
                                                                 platform::EventHandler handler);

}  // namespace windows::com
