#pragma once

#include <string>

#include "platform/late_bound.h"
#include "platform/registry.h"

namespace windows {

/// The ProgID of the object server: the machine value "Object Server" under "SOFTWARE\LonWorks\LCA", which
/// can name a simulated one, or else the platform's own.
std::string ObjectServerProgId(platform::Registry& registry);

/// Makes the object server of this process. Throws if it is not installed or does not start.
platform::LateBoundPtr MakeObjectServer(platform::Registry& registry);

}  // namespace windows
