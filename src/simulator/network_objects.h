#pragma once

#include <string>
#include <vector>

#include "simulator/object.h"

namespace simulator {

/// A network of the installation. Its name and IsOpen always work; all other members need an open network.
class Network : public Simulated<Network> {
 public:
  Network(Origin origin, std::string name) : Simulated(std::move(origin)), name_(std::move(name)) {}
  static std::span<const MemberRow<Network>> Members();

 private:
  Value Systems();
  std::string name_;
};

/// A network's only system.
class System : public Simulated<System> {
 public:
  System(Origin origin, std::string network) : Simulated(std::move(origin)), network_(std::move(network)) {}
  static std::span<const MemberRow<System>> Members();

  /// Throws 17004 if the network is not open.
  stored::System& Data();

 private:
  Value ServiceDevice();
  Value Subsystems();
  Value Templates();
  Value Apps();
  void Begin(int milliseconds);

  std::string network_;
  std::int32_t data_server_mode_ = 0;
};

/// The system's own device on the network. Without an interface the system opens in engineered mode.
class NetworkServiceDevice : public Simulated<NetworkServiceDevice> {
 public:
  NetworkServiceDevice(Origin origin, std::string network)
      : Simulated(std::move(origin)), network_(std::move(network)) {}
  static std::span<const MemberRow<NetworkServiceDevice>> Members();

 private:
  Value Interface();
  void SetInterface(const Value& value);
  std::string network_;
};

class NetworkInterface : public Simulated<NetworkInterface> {
 public:
  NetworkInterface(Origin origin, std::string name) : Simulated(std::move(origin)), name_(std::move(name)) {}
  static std::span<const MemberRow<NetworkInterface>> Members();
  const std::string& name() const { return name_; }

 private:
  std::string name_;
};

/// The name of an interface object, possibly from another process; empty for nothing. Throws 17006 for an
/// unknown interface.
std::string InterfaceName(stored::Installation& installation, const LateBoundPtr& object);

/// The devices of a subsystem; for "ALL", of the network.
class AppDevices : public Simulated<AppDevices> {
 public:
  AppDevices(Origin origin, stored::Chain chain) : Simulated(std::move(origin)), chain_(std::move(chain)) {}
  static std::span<const MemberRow<AppDevices>> Members();

 private:
  stored::Network& Network() { return stored::NetworkOf(installation(), network()); }
  Value Item(Arguments arguments);
  Value Add(Arguments arguments);
  stored::Chain chain_;
};

}  // namespace simulator
