#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automation/convert.h"
#include "simulator/simulation.h"
#include "support/conditions.h"

/// A client of the simulated object server: each line is one line of a script.
namespace client {

using platform::LateBoundPtr;
using platform::Value;

/// A network "T" on the interface L1 that every kind of session can reach, with the thermostats A and B in
/// the subsystem "F", C in "F.West" and D discovered; and a network "U" on the interface L2.
extern const char kWorld[];

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

/// Follows members from the object: "Member", "Member(argument)"; the last may be "Member=value". Arguments
/// are whole numbers, texts, "nothing", or "@" and another such line; ";" separates them.
Value Do(const LateBoundPtr& object, const std::string& line);
inline LateBoundPtr Reach(const LateBoundPtr& object, const std::string& line) {
  return automation::ToObject(Do(object, line));
}
inline std::string Text(const LateBoundPtr& object, const std::string& line) {
  return automation::ToText(Do(object, line));
}

struct OpenWorld : testing::Test {
  World world;
  LateBoundPtr root = world.Open();
  LateBoundPtr control = Reach(root, "Simulator");
  LateBoundPtr device = Reach(root, kDeviceA);
};

/// The object server's error code, or the number of another error; 0 on success.
int CodeOf(const std::function<void()>& action);
inline int CodeOf(const LateBoundPtr& object, const std::string& line) {
  return CodeOf([&] { Do(object, line); });
}

/// Runs the lines: "line", "line -> text of the result", "line ! error code".
void Play(const LateBoundPtr& object, const std::vector<std::string>& lines);

std::string Contents(const std::filesystem::path& path);

std::string Replaced(std::string text, const std::string& from, const std::string& to);

std::string Quoted(std::string text);

}  // namespace client
