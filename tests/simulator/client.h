#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/simulation.h"

/// A client of the simulated object server that speaks in one line what a script would say in one line.
namespace client {

using platform::LateBoundPtr;
using platform::Value;

/// A network "T" on the interface L1, reachable in every way, with the thermostats A and B in the subsystem
/// "F", C in "F.West" and a found but unplaced D; and a network "U" on the interface L2.
extern const char kWorld[];

struct World {
  explicit World(std::string_view text = kWorld);
  /// A client of its own, with the network "T" open down to its system.
  LateBoundPtr Open();
  std::vector<std::string> Journal() const;

  std::vector<int> slept;
  std::shared_ptr<simulator::Simulation> simulation;
};

inline const std::string kSystem = "Networks(T).Systems(1)";
inline const std::string kDeviceA = kSystem + ".Subsystems(F).AppDevices(A)";
inline const std::string kVariablesOfA = kDeviceA + ".Interface.NetworkVariables";

/// Follows members from the object: "Member", "Member(argument)", at last perhaps "Member=value". Arguments
/// are whole numbers, texts, or "nothing"; several are separated by ";".
Value Do(const LateBoundPtr& object, std::string_view line);
Value Put(const LateBoundPtr& object, std::string_view member, Value value);
LateBoundPtr Reach(const LateBoundPtr& object, std::string_view line);
std::string Text(const LateBoundPtr& object, std::string_view line);

/// The object server's error code of what is done, 0 where it succeeds.
int CodeOf(const std::function<void()>& action);
int CodeOf(const LateBoundPtr& object, std::string_view line);

/// Does line after line: "line", "line -> text of the result", "line ! error code".
void Play(const LateBoundPtr& object, const std::vector<std::string>& lines);

/// The text with the one place that reads `from` changed.
std::string Replaced(std::string text, const std::string& from, const std::string& to);

}  // namespace client
