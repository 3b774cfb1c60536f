#pragma once

#include <string>

#include "simulator/object.h"

namespace simulator {

/// The subsystems below a chain of names; at the top level followed by "ALL" and "Discovered".
Collection::NameItems SubsystemNames(const std::string& network, const stored::Chain& chain);
Collection::MakeItem MakeSubsystem(const std::string& network, const stored::Chain& chain);

class Subsystem : public Simulated<Subsystem> {
 public:
  Subsystem(Origin origin, stored::Chain chain) : Simulated(std::move(origin)), chain_(std::move(chain)) {}
  static std::span<const MemberRow<Subsystem>> Members();

 private:
  Value Subsystems();
  Value Devices();
  stored::Chain chain_;
};

class AppDevice : public Simulated<AppDevice> {
 public:
  AppDevice(Origin origin, stored::DeviceKey key) : Simulated(std::move(origin)), key_(std::move(key)) {}
  static std::span<const MemberRow<AppDevice>> Members();

  stored::Device& Data() { return stored::DeviceOf(installation(), key_); }

 private:
  Value Template();
  Value MainInterface();
  Value Subsystems();
  Value Test();
  void SetState(const Value& value);
  stored::DeviceKey key_;
};

/// The main interface of a device; its name is empty.
class Interface : public Simulated<Interface> {
 public:
  Interface(Origin origin, stored::DeviceKey key) : Simulated(std::move(origin)), key_(std::move(key)) {}
  static std::span<const MemberRow<Interface>> Members();

 private:
  Value Variables();
  Value Objects();
  void Upload(Arguments);
  void Download(Arguments);
  stored::Device& Answering();
  stored::DeviceKey key_;
};

class LonMarkObject : public Simulated<LonMarkObject> {
 public:
  LonMarkObject(Origin origin, stored::DeviceKey key, std::string name)
      : Simulated(std::move(origin)), key_(std::move(key)), name_(std::move(name)) {}
  static std::span<const MemberRow<LonMarkObject>> Members();

  /// Throws 17096 if the object was removed.
  stored::LonMarkObject& Data();

 private:
  void SetMode(const Value& value);
  void Request(const Value& value);
  Value Variables();
  Value Apps();
  stored::DeviceKey key_;
  std::string name_;
};

/// True for "ALL" and "Discovered", which always exist.
bool IsPredefined(const stored::Chain& chain);

std::string DevicePath(ClientSession& session, const stored::DeviceKey& key);

/// The session can reach the device now.
bool Answers(ClientSession& session, const stored::DeviceKey& key);

}  // namespace simulator
