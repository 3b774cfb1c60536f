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

/// Makes this thread a single-threaded apartment for OLE controls and the home of the objects created on it.
/// Leaving it disconnects the clients that still hold objects, which ends those objects.
class Apartment {
 public:
  Apartment();
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment();

 private:
  HomeThread::Window home_;
};

/// What the command-line switches ask an automation server to do.
enum class ServerStart { ByHand, ByCom, Register, Unregister };

/// `arguments` is the command line without the program. Switches begin with "-" or "/", in any letter case.
/// Those that register must be the first word; COM adds its own after the registered ones.
ServerStart ServerStartOf(std::string_view arguments);

/// The public class of a server program.
struct ServedClass {
  CLSID id;
  /// Creates a new object for a client, which gets its exceptions.
  std::function<std::shared_ptr<automation::Published>()> make;
  /// Creates the adapter of a new object; if empty, a plain DispatchAdapter.
  std::function<ComPtr<IUnknown>(const std::shared_ptr<automation::Published>&)> open = {};
};

/// The life of a server; docs/architecture.md has it as a table.
struct ServerLifetime {
  /// The server leaves after clients have released all objects; otherwise only its owner ends it.
  bool leaves_when_unused = true;
  /// How long the server stays after its last client, because clients often return at once, and creating an
  /// object may fail while the server leaves.
  std::chrono::milliseconds linger{1000};
  /// How long a client that has found the class may take to get its object.
  std::chrono::milliseconds grace{250};
  /// A server that COM started leaves if no client reaches it within this time: if COM starts several for
  /// simultaneous clients, all clients get the same one. Zero for no limit.
  std::chrono::milliseconds idle_limit{0};
};

/// COM's usual limit for a server that it starts.
constexpr std::chrono::seconds kIdleLimit{10};

/// Serves one class to other processes from the thread of its apartment. One per process; clients' adapters
/// may outlive it until the apartment is left.
class LocalServer {
 public:
  /// Makes the class available. Throws an Error if the system refuses.
  LocalServer(ServedClass served, ServerLifetime lifetime);
  LocalServer(const LocalServer&) = delete;
  LocalServer& operator=(const LocalServer&) = delete;
  ~LocalServer();

  /// Runs the message loop until the server ends or WM_QUIT is posted; returns that message's code.
  /// `translate` gets every message first and returns true for those it handled (dialog keys, accelerators).
  int Run(const std::function<bool(MSG&)>& translate = {});

  /// The owner's work is done. If clients hold objects, cuts them off and ends the message loop. Otherwise
  /// the loop ends a little later, unless a new client arrives, which is served.
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
  /// The number of arriving clients: objects being created, and locks on the class.
  int making_ = 0;
  int locks_ = 0;
  DWORD registration_ = 0;
  UINT_PTR timer_ = 0;
};

}  // namespace windows::com
