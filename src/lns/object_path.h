#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lns/object_model.h"

namespace lns {

/// The components of an object's path as directors write it, split at "/":
///
///   network / system.subsystem[.subsystem...] / device [/ LonMark object]
///
/// A component may have the prefix of its class and ":" ("LcaAppDevice:Room 101").
std::vector<std::string> SplitObjectPath(std::string_view path);

/// The path of the device in such a path, without class prefixes.
std::string DevicePath(std::string_view path);

/// The devices of the subsystem that such a path names on the open network. Throws the platform's error, and
/// 5 if the path names another network or system.
Collection<AppDevice> DevicesBeside(std::string_view path, const Network& network, const System& system);

/// The application device or LonMark object that the path names on the open network, depending on the object
/// type; nothing if the path has too few components, names another network or system, or if a look-up fails.
/// Network and system are copies, as another network may be opened meanwhile.
Object ResolveObject(std::int32_t object_type, const std::vector<std::string>& components, Network network,
                     System system);

}  // namespace lns
