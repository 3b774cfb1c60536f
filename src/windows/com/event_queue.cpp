#include "windows/com/event_queue.h"

#include <objbase.h>

#include "windows/com/failure.h"

namespace windows::com {

EventQueue::Argument::Argument(const VARIANT& argument) {
  Check(VariantCopyInd(value_.get(), const_cast<VARIANT*>(&argument)));
  const bool object = value_->vt == VT_DISPATCH || value_->vt == VT_UNKNOWN;
  if (!object || !value_->punkVal) return;
  // What has no way into another apartment, as on a thread that is in none, is handed over as it is.
  if (SUCCEEDED(CoMarshalInterThreadInterfaceInStream(__uuidof(IDispatch), value_->punkVal, way_.Receive())))
    value_ = Variant();
}

EventQueue::Argument::~Argument() {
  if (way_) CoReleaseMarshalData(way_.get());
}

Variant EventQueue::Argument::Take() {
  if (!way_) return std::move(value_);
  Variant object;
  object->vt = VT_DISPATCH;
  object->pdispVal = nullptr;
  // Without an object that has gone the event still says something.
  static_cast<void>(CoGetInterfaceAndReleaseStream(way_.Detach(), __uuidof(IDispatch),
                                                   reinterpret_cast<void**>(&object->pdispVal)));
  return object;
}

void EventQueue::Add(DISPID number, const DISPPARAMS& parameters) {
  Waiting event{number, {}};
  for (UINT i = 0; i < parameters.cArgs; ++i) event.arguments.emplace_back(parameters.rgvarg[i]);
  const std::lock_guard lock(mutex_);
  if (!closed_) waiting_.push_back(std::move(event));
}

std::optional<EventQueue::Event> EventQueue::Next() {
  std::unique_lock lock(mutex_);
  if (waiting_.empty()) return std::nullopt;
  Waiting next = std::move(waiting_.front());
  waiting_.pop_front();
  lock.unlock();  // an object may be reached through calls
  Event event{next.number, {}};
  for (Argument& argument : next.arguments) event.arguments.push_back(argument.Take());
  return event;
}

void EventQueue::Close() {
  std::deque<Waiting> dropped;
  const std::lock_guard lock(mutex_);
  closed_ = true;
  dropped.swap(waiting_);
}

}  // namespace windows::com
