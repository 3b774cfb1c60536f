#pragma once

#include <windows.h>

#include <oaidl.h>

#include <memory>

#include "platform/late_bound.h"

namespace windows::com {

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
