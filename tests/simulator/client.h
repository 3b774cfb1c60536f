#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automation/convert.h"
#include "simulator/simulation.h"

/// A client of the simulated object server that speaks in one line what a script would say in one line.
namespace client {

using platform::LateBoundPtr;
using platform::Value;

/// A network "T" on the interface L1, reachable in every way, with the thermostats A and B in the subsystem
/// "F", C in "F.West" and a found but unplaced D; and a network "U" on the interface L2.
extern const char kWorld[];

/// A client of its own, with the network "T" open down to its system.
LateBoundPtr OpenSystem(simulator::Simulation& simulation);

struct World {
  explicit World(const std::string& text = kWorld);
  LateBoundPtr Open() { return OpenSystem(*simulation); }

  std::vector<int> slept;
  std::shared_ptr<simulator::Simulation> simulation;
};

inline const std::string kSystem = "Networks(T).Systems(1)";
inline const std::string kDeviceA = kSystem + ".Subsystems(F).AppDevices(A)";
inline const std::string kVariablesOfA = kDeviceA + ".Interface.NetworkVariables";

/// Follows members from the object: "Member", "Member(argument)", at last perhaps "Member=value". Arguments
/// are whole numbers, texts, "nothing", or "@" before such a line; several are separated by ";".
Value Do(const LateBoundPtr& object, const std::string& line);
inline LateBoundPtr Reach(const LateBoundPtr& object, const std::string& line) {
  return automation::ToObject(Do(object, line));
}
inline std::string Text(const LateBoundPtr& object, const std::string& line) {
  return automation::ToText(Do(object, line));
}

/// Tests that begin as a client with everything open.
struct OpenWorld : testing::Test {
  World world;
  LateBoundPtr root = world.Open();
  LateBoundPtr control = Reach(root, "Simulator");
  LateBoundPtr device = Reach(root, kDeviceA);
};

/// The object server's error code of what is done or the number of another error, 0 where it succeeds.
int CodeOf(const std::function<void()>& action);
inline int CodeOf(const LateBoundPtr& object, const std::string& line) {
  return CodeOf([&] { Do(object, line); });
}

/// Does line after line: "line", "line -> text of the result", "line ! error code".
void Play(const LateBoundPtr& object, const std::vector<std::string>& lines);

std::string Contents(const std::filesystem::path& path);

/// The text with the one place that reads `from` changed.
std::string Replaced(std::string text, const std::string& from, const std::string& to);

/// With double quotes in place of single ones, so that tables stay readable.
std::string Quoted(std::string text);

}  // namespace client
