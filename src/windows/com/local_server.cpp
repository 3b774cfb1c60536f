#include "windows/com/local_server.h"

#include <ole2.h>

#include <array>
#include <utility>
#include <vector>

#include "text/strings.h"
#include "windows/com/dispatch_door.h"
#include "windows/com/failure.h"
#include "windows/com/implements.h"

namespace windows::com {
namespace {

/// How long a client may be on its way to an object after it has found the class.
constexpr std::chrono::milliseconds kGrace{250};

/// The timer of a thread carries no context of its own.
LocalServer* running_server = nullptr;

class ClassFactory final : public Implements<IClassFactory> {
 public:
  explicit ClassFactory(ServedClass served) : served_(std::move(served)) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** interface_pointer) override
      try {
    if (!interface_pointer) return E_POINTER;
    *interface_pointer = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    const ComPtr<IUnknown> door = Open(served_.make());
    return door->QueryInterface(id, interface_pointer);
  } catch (...) {
    return ReportAsResult();
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    if (lock)
      locks_.emplace_back(std::make_unique<ServerUse>());
    else if (!locks_.empty())
      locks_.pop_back();
    return S_OK;
  }

 private:
  ComPtr<IUnknown> Open(const std::shared_ptr<automation::Published>& object) const {
    if (served_.open) return served_.open(object);
    return DispatchDoor::For(object);
  }

  ServedClass served_;
  std::vector<std::unique_ptr<ServerUse>> locks_;
};

}  // namespace

Apartment::Apartment() { Check(OleInitialize(nullptr), "Cannot start COM"); }

Apartment::~Apartment() { OleUninitialize(); }

ServerStart ServerStartOf(std::string_view arguments) {
  struct Switch {
    std::string_view name;
    ServerStart start;
  };
  static constexpr std::array kSwitches{
      Switch{"Embedding", ServerStart::ByCom}, Switch{"Automation", ServerStart::ByCom},
      Switch{"RegServer", ServerStart::Register}, Switch{"UnregServer", ServerStart::Unregister}};
  for (const std::string& word : text::Split(arguments, " ")) {
    if (!word.starts_with('-') && !word.starts_with('/')) continue;
    for (const Switch& known : kSwitches)
      if (text::EqualIgnoringCase(std::string_view(word).substr(1), known.name)) return known.start;
  }
  return ServerStart::ByHand;
}

LocalServer::LocalServer(ServedClass served, ServerLifetime lifetime)
    : class_id_(served.id), factory_(Make<ClassFactory>(std::move(served))), lifetime_(std::move(lifetime)) {
  Offer();
  running_server = this;
  ServerUse::WhenUnused([this] {
    was_used_ = true;
    Wait(lifetime_.linger);
  });
  if (lifetime_.idle_limit.count() > 0) Wait(lifetime_.idle_limit);
}

LocalServer::~LocalServer() {
  Withdraw();
  ServerUse::WhenUnused({});
  if (timer_) KillTimer(nullptr, timer_);
  running_server = nullptr;
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

void LocalServer::Quit() {
  Withdraw();
  PostQuitMessage(0);
}

void LocalServer::QuitUnlessUsed() {
  Withdraw();
  Wait(kGrace);
}

void LocalServer::Offer() {
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

/// A timer, not a posted message: message boxes and menus run loops of their own, which lose a thread's
/// messages.
void LocalServer::Wait(std::chrono::milliseconds delay) {
  timer_ = SetTimer(nullptr, timer_, static_cast<UINT>(delay.count()), &OnTimer);
}

void CALLBACK LocalServer::OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  if (!running_server || running_server->timer_ != timer) return;
  running_server->timer_ = 0;
  try {
    running_server->Decide();
  } catch (...) {
    // A timer has no caller to tell. Those who hold objects are served on.
  }
}

void LocalServer::Decide() {
  const bool used = ServerUse::count() > 0;
  const bool withdrawn = registration_ == 0;
  if (used && withdrawn)
    Offer();
  else if (used)
    return;
  else if (withdrawn)
    PostQuitMessage(0);
  else if (was_used_ && lifetime_.on_last_object_released)
    lifetime_.on_last_object_released();
  else
    QuitUnlessUsed();
}

}  // namespace windows::com
