#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "platform/late_bound.h"

namespace director {

/// A message box.
struct Box {
  std::string title;
  std::string text;
  /// The commands of its buttons as in Windows: 1 OK, 2 Cancel, 6 Yes, 7 No.
  std::span<const int> buttons;

  bool IsQuestion() const;
  /// The button for this answer. Messages get OK; a dialog with OK and Cancel, such as a file dialog, is
  /// cancelled.
  int ButtonFor(bool yes) const;
};

/// The director's output about a box that waits for the user or, with an answer, that the director answers.
std::string Report(const Box& box, std::optional<bool> answer);

struct ConfigureRequest {
  /// network/system.subsystem[.subsystem...]/device
  std::string path;
  /// The LonMark object of the device to configure; empty for the device itself.
  std::string lonmark_object;
  /// Empty for a local session, "Internet" for a lightweight one, otherwise a remote network interface.
  std::string interface_name;
  /// In pixels; the plug-in chooses missing values.
  std::optional<std::int32_t> left, top, width, height;
  bool hidden = false;
};

/// Sends the command to a plug-in's automation object in the usual order of directors: remote settings,
/// network, place and size, the command, the window. Throws what the plug-in raises.
void Configure(platform::LateBound& plug_in, const ConfigureRequest& request);

/// Makes the plug-in add its commands to a network's system, or remove them.
void SendToSystem(platform::LateBound& plug_in, std::int32_t command, const std::string& network,
                  const std::string& interface_name, const std::string& system_path);

/// The plug-in answers and shows its window.
bool IsShown(platform::LateBound& plug_in);

}  // namespace director
