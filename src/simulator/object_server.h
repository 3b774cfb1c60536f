#pragma once

#include <memory>

#include "simulator/object.h"

namespace simulator {

/// The root of a session. It has the numbers of the platform's control; its last reference closes what it
/// opened.
class ObjectServer : public Simulated<ObjectServer> {
 public:
  explicit ObjectServer(std::shared_ptr<Session> session)
      : Simulated({std::move(session), nullptr, {"LcaObjectServer", "", ""}, ""}) {}

  static std::span<const MemberRow<ObjectServer>> Members();

  std::unique_ptr<platform::Subscription> Advise(platform::EventHandler handler) override;

 private:
  Value Networks();
  Value Interfaces(const std::string& part);
  Value ActiveRemoteInterface();
  void SetActiveRemoteInterface(const Value& value);
  void SetFlags(const Value& value);
  Value Apps();
  Value Control();

  LateBoundPtr control_;
};

}  // namespace simulator
