#pragma once

#include <string>

#include "simulator/collection.h"
#include "simulator/object.h"

namespace simulator {

/// The subsystems below a chain of names; at the top level with "ALL" and "Discovered" behind them.
Collection::Names SubsystemNames(const std::string& network, const model::Chain& chain);
Collection::MakeItem MakeSubsystem(const std::string& network, const model::Chain& chain);

class Subsystem : public Simulated<Subsystem> {
 public:
  Subsystem(Origin origin, model::Chain chain) : Simulated(std::move(origin)), chain_(std::move(chain)) {}
  static std::span<const MemberRow<Subsystem>> Members();

 private:
  Value Subsystems();
  Value Devices();
  model::Chain chain_;
};

class AppDevice : public Simulated<AppDevice> {
 public:
  AppDevice(Origin origin, model::DeviceKey key) : Simulated(std::move(origin)), key_(std::move(key)) {}
  static std::span<const MemberRow<AppDevice>> Members();

 private:
  model::Device& Data() { return model::DeviceOf(installation(), key_); }
  Value Template();
  Value MainInterface();
  Value Subsystems();
  Value Test();
  void SetState(const Value& value);
  model::DeviceKey key_;
};

/// The main interface of a device; its own name is empty.
class Interface : public Simulated<Interface> {
 public:
  Interface(Origin origin, model::DeviceKey key) : Simulated(std::move(origin)), key_(std::move(key)) {}
  static std::span<const MemberRow<Interface>> Members();

 private:
  Value Variables();
  Value Objects();
  Value Upload();
  Value Download();
  model::Device& Answering();
  model::DeviceKey key_;
};

class LonMarkObject : public Simulated<LonMarkObject> {
 public:
  LonMarkObject(Origin origin, model::DeviceKey key, std::string name)
      : Simulated(std::move(origin)), key_(std::move(key)), name_(std::move(name)) {}
  static std::span<const MemberRow<LonMarkObject>> Members();

 private:
  model::LonMarkObject& Data();
  void SetMode(const Value& value);
  void Request(const Value& value);
  Value Variables();
  Value Apps();
  model::DeviceKey key_;
  std::string name_;
};

/// "ALL" and "Discovered", which are always there.
bool IsPredefined(const model::Chain& chain);

std::string DevicePath(Session& session, const model::DeviceKey& key);

/// Whether the session can talk to the device now.
bool Answers(Session& session, const model::DeviceKey& key);

}  // namespace simulator
