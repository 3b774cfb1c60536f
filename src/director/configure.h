#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/late_bound.h"

namespace director {

/// A configure command as the director's user asks for it.
struct ConfigureRequest {
  /// network/system.subsystem[.subsystem...]/device
  std::string path;
  /// The LonMark object of the device to configure; empty for the device itself.
  std::string lonmark_object;
  /// Empty for a local session, "Internet" for a lightweight one, else a remote network interface.
  std::string interface_name;
  /// In pixels; what is not given is left to the plug-in.
  std::optional<std::int32_t> left, top, width, height;
  bool hidden = false;
};

/// Sends the command to a plug-in's automation object as directors do: remote settings first, then the
/// network, place and size, the command, and at last the window shown. Throws what the plug-in raises.
void Configure(platform::LateBound& plug_in, const ConfigureRequest& request);

/// Has the plug-in put its commands on a network, or take them off, as a director does for its system.
void SendToSystem(platform::LateBound& plug_in, std::int32_t command, const std::string& network,
                  const std::string& interface_name, const std::string& system_path);

/// Whether the plug-in still answers and shows its window.
bool IsShown(platform::LateBound& plug_in);

}  // namespace director
