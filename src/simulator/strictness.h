#pragma once

#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace simulator {

/// The points on which the object server is as strict as its documentation; real ones often allow more. By
/// default it allows everything.
struct Strictness {
  /// Format names only as documented: the unit system after a standard type, user types fully qualified.
  bool formats = false;
  /// Values in regional settings with a decimal comma and ";" as list separator.
  bool regional = false;
  /// Less precision: temperatures in tenths.
  bool coarse = false;
  /// The data server's settings can change only while it is paused, values can be read and written only while
  /// it is not.
  bool pausing = false;
  /// Events are raised on another thread.
  bool threads = false;
  /// The network database keeps its own values; writing a variable changes only the device.
  bool database = false;
  /// The error code for a network's fifth device, as in demonstration mode; 0 for a licence.
  int demonstration = 0;
  /// Members that later releases added are missing; 300 is release 3.0.
  int release = kNewest;
  /// Members that do not exist, and members that cannot be set.
  std::set<std::string, std::less<>> missing, read_only;

  static constexpr int kNewest = std::numeric_limits<int>::max();
  static constexpr int kDemonstrationDevices = 4;

  bool Knows(std::string_view member, int since) const {
    return since <= release && !missing.contains(member);
  }

  /// All points.
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

/// The settings by their keys in the network file.
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
