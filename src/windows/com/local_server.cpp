#include "windows/com/local_server.h"

#include <ole2.h>

#include <algorithm>
#include <array>
#include <utility>

#include "text/strings.h"
#include "windows/com/adapter.h"
#include "windows/com/failure.h"

namespace windows::com {
namespace {

/// A thread's timer has no context, and clients may hold the class longer than the server exists.
LocalServer* running_server = nullptr;

}  // namespace

class LocalServer::Factory final : public Implements<IClassFactory> {
 public:
  explicit Factory(ServedClass served) : served_(std::move(served)) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** interface_pointer) override
      try {
    if (!interface_pointer) return E_POINTER;
    *interface_pointer = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    if (!running_server || running_server->state_ == State::Gone) return CO_E_SERVER_STOPPING;
    const Making making(*running_server);
    const ComPtr<IUnknown> adapter = Open(served_.make());
    running_server->Enter(State::Serving);
    return adapter->QueryInterface(id, interface_pointer);
  } catch (...) {
    return ReportAsResult();
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    if (!running_server) return S_OK;
    int& locks = running_server->locks_;
    locks = std::max(0, locks + (lock ? 1 : -1));
    return S_OK;
  }

 private:
  class Making {
   public:
    explicit Making(LocalServer& server) : server_(server) { ++server_.making_; }
    Making(const Making&) = delete;
    Making& operator=(const Making&) = delete;
    ~Making() { --server_.making_; }

   private:
    LocalServer& server_;
  };

  ComPtr<IUnknown> Open(const std::shared_ptr<automation::Published>& object) const {
    if (served_.open) return served_.open(object);
    return DispatchAdapter::For(object);
  }

  ServedClass served_;
};

Apartment::Apartment() { Check(OleInitialize(nullptr), "Cannot start COM"); }

Apartment::~Apartment() {
  home_.DoAll();
  OleUninitialize();
  DisconnectAllAdapters();
}

ServerStart ServerStartOf(std::string_view arguments) {
  struct Switch {
    std::string_view name;
    ServerStart start;
  };
  static constexpr std::array kSwitches{
      Switch{"Embedding", ServerStart::ByCom}, Switch{"Automation", ServerStart::ByCom},
      Switch{"RegServer", ServerStart::Register}, Switch{"UnregServer", ServerStart::Unregister}};
  bool first = true;
  for (const std::string& word : text::Split(arguments, " ")) {
    if (word.empty()) continue;
    const bool may_register = std::exchange(first, false);
    if (!word.starts_with('-') && !word.starts_with('/')) continue;
    for (const Switch& known : kSwitches)
      if ((may_register || known.start == ServerStart::ByCom) &&
          text::EqualIgnoringCase(std::string_view(word).substr(1), known.name))
        return known.start;
  }
  return ServerStart::ByHand;
}

LocalServer::LocalServer(ServedClass served, ServerLifetime lifetime)
    : class_id_(served.id), lifetime_(lifetime), factory_(Make<Factory>(std::move(served))) {
  running_server = this;
  Enter(State::Waiting);
  ServerUse::WhenUnused([this] { Unused(); });
}

LocalServer::~LocalServer() {
  ServerUse::WhenUnused({});
  running_server = nullptr;
  Withdraw();
  if (timer_) KillTimer(nullptr, timer_);
}

int LocalServer::Run(const std::function<bool(MSG&)>& translate) {
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (translate && translate(message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return static_cast<int>(message.wParam);
}

void LocalServer::Leave() {
  if (state_ == State::Leaving || state_ == State::Gone) return;
  Enter(ServerUse::count() > 0 ? State::Gone : State::Lingering);
}

void LocalServer::Unused() {
  if (state_ == State::Serving && lifetime_.leaves_when_unused) Enter(State::Lingering);
}

void LocalServer::TimePassed() {
  if (ServerUse::count() > 0) return Enter(State::Serving);
  if (making_ > 0 || locks_ > 0) return Enter(state_);
  Enter(state_ == State::Leaving ? State::Gone : State::Leaving);
}

/// The only place where the state changes.
void LocalServer::Enter(State next) {
  if (state_ == State::Gone) return;
  const bool offered = next != State::Leaving && next != State::Gone;
  offered ? Offer() : Withdraw();
  state_ = next;
  if (timer_) KillTimer(nullptr, std::exchange(timer_, 0));
  // A timer, not a posted message, because the loops of message boxes and menus lose a thread's messages.
  if (const auto time = TimeIn(state_))
    timer_ = SetTimer(nullptr, 0, static_cast<UINT>(time->count()), &OnTimer);
  if (state_ == State::Gone) PostQuitMessage(0);
}

std::optional<std::chrono::milliseconds> LocalServer::TimeIn(State state) const {
  if (state == State::Waiting && lifetime_.idle_limit.count() > 0) return lifetime_.idle_limit;
  if (state == State::Lingering) return lifetime_.linger;
  if (state == State::Leaving) return lifetime_.grace;
  return std::nullopt;
}

void LocalServer::Offer() {
  if (registration_ != 0) return;
  Check(CoRegisterClassObject(class_id_, factory_.get(), CLSCTX_LOCAL_SERVER,
                              REGCLS_MULTIPLEUSE | REGCLS_SUSPENDED, &registration_),
        "Cannot offer the class to clients");
  CoResumeClassObjects();
}

void LocalServer::Withdraw() {
  if (registration_ == 0) return;
  CoSuspendClassObjects();
  CoRevokeClassObject(std::exchange(registration_, 0));
}

void CALLBACK LocalServer::OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  if (!running_server || running_server->timer_ != timer) return;
  running_server->timer_ = 0;
  try {
    running_server->TimePassed();
  } catch (...) {
    // A timer has no caller to report to. Clients with objects are still served.
  }
}

}  // namespace windows::com
