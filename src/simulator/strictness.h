#pragma once

#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace simulator {

/// Where the object server is as strict as its documentation, which many answer more kindly than. At first it
/// forgives everything.
struct Strictness {
  /// Format names only as documented: the unit system behind a standard type, user types fully qualified.
  bool formats = false;
  /// Values in regional settings with a decimal comma and ";" as list separator.
  bool regional = false;
  /// One digit of the precision fewer: temperatures in tenths.
  bool coarse = false;
  /// Settings of the data server change only while it is paused, and values travel only while it is not.
  bool pausing = false;
  /// Events come on a thread of their own.
  bool threads = false;
  /// The network database keeps values of its own; writing a variable changes the device alone.
  bool database = false;
  /// The code with which the fifth device of a network fails, as in demonstration mode; 0 for a licence.
  int demonstration = 0;
  /// Members that a later release has added are missing: 300 stands for release 3.0.
  int release = kNewest;
  /// Members that it does not know, and members that cannot be put.
  std::set<std::string, std::less<>> missing, read_only;

  static constexpr int kNewest = std::numeric_limits<int>::max();
  static constexpr int kDemonstrationDevices = 4;

  bool Knows(std::string_view member, int since) const {
    return since <= release && !missing.contains(member);
  }

  /// Everything at once.
  static Strictness All() {
    return {true,
            true,
            true,
            true,
            true,
            true,
            17009,
            300,
            {"SourceOptions", "RemoteNetworkInterfaces"},
            {"VersionNumber"}};
  }
};

/// The switches by their keys in the network file.
inline constexpr std::pair<const char*, bool Strictness::*> kStrictFlags[] = {
    {"formats", &Strictness::formats}, {"regional", &Strictness::regional},
    {"coarse", &Strictness::coarse},   {"pausing", &Strictness::pausing},
    {"threads", &Strictness::threads}, {"database", &Strictness::database},
};
inline constexpr std::pair<const char*, std::set<std::string, std::less<>> Strictness::*> kStrictMembers[] = {
    {"missingMembers", &Strictness::missing},
    {"readOnlyMembers", &Strictness::read_only},
};

}  // namespace simulator
