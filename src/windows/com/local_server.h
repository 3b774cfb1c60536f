#pragma once

#include <windows.h>

#include <oaidl.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string_view>

#include "automation/published.h"
#include "windows/com/com_ptr.h"
#include "windows/com/server_use.h"

namespace windows::com {

/// This thread as a single-threaded apartment, with what OLE controls need. Leaving it disconnects the
/// clients that still hold objects, which ends those objects.
class Apartment {
 public:
  Apartment();
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment();
};

/// What the switches of the command line ask of an automation server.
enum class ServerStart { ByHand, ByCom, Register, Unregister };

/// `arguments` is the command line without the program. Switches begin with "-" or "/", in any letter case.
ServerStart ServerStartOf(std::string_view arguments);

/// The one public class of a server program.
struct ServedClass {
  CLSID id;
  /// Makes a new object for a client. What it throws becomes the result of the client's creation.
  std::function<std::shared_ptr<automation::Published>()> make;
  /// Opens the door of a new object; without it, a plain DispatchDoor.
  std::function<ComPtr<IUnknown>(const std::shared_ptr<automation::Published>&)> open = {};
};

/// When a server has nobody to serve any more.
struct ServerLifetime {
  /// Called from the message loop when no client has held any object for the time of `linger`. Without it the
  /// server quits then.
  std::function<void()> on_last_object_released = {};
  /// A client that creates an object while its server leaves may fail, and clients like to come back at once:
  /// the server stays a little.
  std::chrono::milliseconds linger{1000};
  /// A server that COM started and that no client reached within this time quits: of several that COM starts
  /// for clients that come at the same time, all clients get the same one. Zero for a server that waits for
  /// ever.
  std::chrono::milliseconds idle_limit{0};
};

/// COM's usual limit for a server that it starts.
constexpr std::chrono::seconds kIdleLimit{10};

/// Serves one class to other processes from the thread of its apartment. One per process; the doors that
/// clients hold may outlive it until the apartment is left.
class LocalServer {
 public:
  /// Makes the class available; an Error where the system refuses.
  LocalServer(ServedClass served, ServerLifetime lifetime);
  LocalServer(const LocalServer&) = delete;
  LocalServer& operator=(const LocalServer&) = delete;
  ~LocalServer();

  /// Runs the message loop until Quit or until anyone posts WM_QUIT; returns that message's code. `translate`
  /// sees every message first and returns true for those that it has dealt with (dialog keys, accelerators).
  int Run(const std::function<bool(MSG&)>& translate = {});

  /// Ends the message loop, whoever still holds objects.
  void Quit();

  /// Withdraws the class and ends the message loop a moment later, unless a client that was on its way then
  /// has got an object by that time.
  void QuitUnlessUsed();

 private:
  static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD);
  void Offer();
  void Withdraw();
  void Wait(std::chrono::milliseconds delay);
  void Decide();

  const CLSID class_id_;
  ComPtr<IClassFactory> factory_;
  ServerLifetime lifetime_;
  DWORD registration_ = 0;
  UINT_PTR timer_ = 0;
  bool was_used_ = false;
};

}  // namespace windows::com
