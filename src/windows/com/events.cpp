#include "windows/com/events.h"

#include <objbase.h>
#include <ocidl.h>
#include <olectl.h>

#include "windows/com/failure.h"
#include "windows/com/home_thread.h"
#include "windows/com/variant_conversion.h"

namespace windows::com {

EventQueue::Argument::Argument(const VARIANT& argument) {
  Check(VariantCopyInd(value_.get(), const_cast<VARIANT*>(&argument)));
  const bool object = value_->vt == VT_DISPATCH || value_->vt == VT_UNKNOWN;
  if (!object || !value_->punkVal) return;
  // An object that cannot be marshalled, for example on a thread without an apartment, is passed unchanged.
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
  // If the object has ended, the event is still useful without it.
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
  lock.unlock();  // unmarshalling may make calls
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

namespace {

/// Has the events' own interface and IDispatch, as sources ask for one or the other. Events from other
/// threads wait until the listener's thread processes messages, and no later event overtakes them.
class EventSink final : public CalledByNumber<Implements<IDispatch>> {
 public:
  EventSink(const IID& events, platform::EventHandler handler)
      : events_(events), handler_(std::make_shared<platform::EventHandler>(std::move(handler))) {}

  /// Makes the sink ignore later events.
  void Close() {
    handler_.reset();
    waiting_.Close();
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                                   EXCEPINFO* info, UINT* bad_argument) override {
    static constexpr DISPPARAMS kNone{};
    const DISPPARAMS& arguments = parameters ? *parameters : kNone;
    if (home().IsAway()) return HandOver(event, arguments);
    HearWaiting();
    return Hear(event, arguments, info, bad_argument);
  }

 protected:
  void* Find(REFIID id) noexcept override {
    return id == events_ ? static_cast<IDispatch*>(this) : CalledByNumber::Find(id);
  }

 private:
  /// Does not block the source, as the listener may be in one of its calls.
  HRESULT HandOver(DISPID event, const DISPPARAMS& parameters) noexcept try {
    waiting_.Add(event, parameters);
    home().Do([self = ComPtr<EventSink>(this)] { self->HearWaiting(); });
    return S_OK;
  } catch (...) {
    return ReportAsResult();
  }

  void HearWaiting() noexcept {
    while (auto event = waiting_.Next()) {
      std::vector<VARIANT> arguments;
      for (Variant& argument : event->arguments) arguments.push_back(*argument.get());
      Hear(event->number, {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0}, nullptr,
           nullptr);
    }
  }

  HRESULT Hear(DISPID event, const DISPPARAMS& parameters, EXCEPINFO* info, UINT* bad_argument) {
    const auto handler = handler_;
    if (!handler) return S_OK;
    UINT position = 0;
    try {
      const auto arguments = FromParameters(parameters, position);
      (*handler)(event, arguments);
      return S_OK;
    } catch (...) {
      if (bad_argument) *bad_argument = position;
      return ReportToInvoke(info);
    }
  }

  const IID events_;
  std::shared_ptr<platform::EventHandler> handler_;
  EventQueue waiting_;
};

class EventSubscription final : public platform::Subscription {
 public:
  EventSubscription(ComPtr<IConnectionPoint> point, const IID& events, platform::EventHandler handler)
      : point_(std::move(point)), sink_(Make<EventSink>(events, std::move(handler))) {
    Check(point_->Advise(sink_.get(), &cookie_), "Cannot receive the object's events");
  }
  EventSubscription(const EventSubscription&) = delete;
  EventSubscription& operator=(const EventSubscription&) = delete;
  ~EventSubscription() override {
    sink_->Close();
    // If the source has ended, there is nothing to disconnect from.
    static_cast<void>(point_->Unadvise(cookie_));
  }

 private:
  ComPtr<IConnectionPoint> point_;
  ComPtr<EventSink> sink_;
  DWORD cookie_ = 0;
};

/// Every control also has this source of property changes, which is not an IDispatch.
bool AreEvents(const IID& source) { return source != __uuidof(IPropertyNotifySink); }

ComPtr<IConnectionPoint> DefaultPoint(IDispatch* object, IConnectionPointContainer& container) {
  ComPtr<IConnectionPoint> point;
  IID id;
  const auto classes = ComPtr<IDispatch>(object).As<IProvideClassInfo2>();
  if (classes && SUCCEEDED(classes->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id)) && AreEvents(id) &&
      SUCCEEDED(container.FindConnectionPoint(id, point.Receive())))
    return point;
  ComPtr<IEnumConnectionPoints> points;
  ULONG count = 0;
  if (FAILED(container.EnumConnectionPoints(points.Receive()))) return nullptr;
  while (points->Next(1, point.Receive(), &count) == S_OK)
    if (SUCCEEDED(point->GetConnectionInterface(&id)) && AreEvents(id)) return point;
  return nullptr;
}

}  // namespace

std::unique_ptr<platform::Subscription> SubscribeToDefaultEvents(IDispatch* object,
                                                                 platform::EventHandler handler) {
  const auto container = ComPtr<IDispatch>(object).As<IConnectionPointContainer>();
  const auto point = container ? DefaultPoint(object, *container.get()) : nullptr;
  if (!point)
    throw platform::Error(platform::kUnknownInterface, std::string(kAutomation),
                          "The object raises no events.");
  IID events;
  Check(point->GetConnectionInterface(&events), "Cannot receive the object's events");
  return std::make_unique<EventSubscription>(point, events, std::move(handler));
}

}  // namespace windows::com
