#pragma once

#include <windows.h>

#include <oaidl.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "automation/published.h"
#include "windows/com/home_thread.h"
#include "windows/com/owners.h"

namespace windows::com {

/// This thread as a single-threaded apartment, with what OLE controls need, and as the home of the objects
/// made on it. Leaving it disconnects the clients that still hold objects, which ends those objects.
class Apartment {
 public:
  Apartment();
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment();

 private:
  HomeThread::Window home_;
};

/// What the switches of the command line ask of an automation server.
enum class ServerStart { ByHand, ByCom, Register, Unregister };

/// `arguments` is the command line without the program. Switches begin with "-" or "/", in any letter case.
/// Those that register count as the first word only; COM puts its own behind what was registered.
ServerStart ServerStartOf(std::string_view arguments);

/// The one public class of a server program.
struct ServedClass {
  CLSID id;
  /// Makes a new object for a client. What it throws becomes the result of the client's creation.
  std::function<std::shared_ptr<automation::Published>()> make;
  /// Opens the adapter of a new object; without it, a plain DispatchAdapter.
  std::function<ComPtr<IUnknown>(const std::shared_ptr<automation::Published>&)> open = {};
};

/// How a server's life goes; docs/architecture.md has it as a table.
struct ServerLifetime {
  /// The server leaves by itself once clients have released all objects; else only its owner lets it.
  bool leaves_when_unused = true;
  /// A client that creates an object while its server leaves may fail, and clients like to come back at once:
  /// the server stays a little.
  std::chrono::milliseconds linger{1000};
  /// How long a client may be on its way to an object after it has found the class.
  std::chrono::milliseconds grace{250};
  /// A server that COM started and that no client reached within this time leaves: of several that COM starts
  /// for clients that come at the same time, all clients get the same one. Zero for a server that waits for
  /// ever.
  std::chrono::milliseconds idle_limit{0};
};

/// COM's usual limit for a server that it starts.
constexpr std::chrono::seconds kIdleLimit{10};

/// Serves one class to other processes from the thread of its apartment. One per process; the adapters that
/// clients hold may outlive it until the apartment is left.
class LocalServer {
 public:
  /// Makes the class available; an Error where the system refuses.
  LocalServer(ServedClass served, ServerLifetime lifetime);
  LocalServer(const LocalServer&) = delete;
  LocalServer& operator=(const LocalServer&) = delete;
  ~LocalServer();

  /// Runs the message loop until the server is gone or until anyone posts WM_QUIT; returns that message's
  /// code. `translate` sees every message first and returns true for those that it has dealt with (dialog
  /// keys, accelerators).
  int Run(const std::function<bool(MSG&)>& translate = {});

  /// The owner's work is done. Where clients hold objects they are cut off and the message loop ends. Else it
  /// ends a little later, unless a client comes meanwhile, which is served.
  void Leave();

 private:
  class Factory;
  enum class State { Waiting, Serving, Lingering, Leaving, Gone };

  static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD);
  void Enter(State next);
  std::optional<std::chrono::milliseconds> TimeIn(State state) const;
  void TimePassed();
  void Unused();
  void Offer();
  void Withdraw();

  const CLSID class_id_;
  const ServerLifetime lifetime_;
  ComPtr<IClassFactory> factory_;
  State state_ = State::Waiting;
  /// Clients on their way: those whose object is being made, and those that have locked the class.
  int making_ = 0;
  int locks_ = 0;
  DWORD registration_ = 0;
  UINT_PTR timer_ = 0;
};

}  // namespace windows::com
