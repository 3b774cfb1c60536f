#include "startup/command_line.h"

#include "text/strings.h"

namespace startup {

CommandLine ParseCommandLine(std::string_view arguments) {
  using enum CommandLine::Role;
  struct Known {
    std::string_view text;
    CommandLine meaning;
  };
  constexpr Known kKnown[] = {
      {"/regplugin", {RegisterPlugIn, -1}},
      {"/deregplugin", {DeregisterPlugIn, 0}},
      {"/deregplugin /deregmode:-1", {DeregisterPlugIn, -1}},
      {"/deregplugin /deregmode:0", {DeregisterPlugIn, 0}},
      {"/deregplugin /deregmode:1", {DeregisterPlugIn, 1}},
  };
  std::string command_text = text::ToLower(text::Trim(arguments));
  const bool in_window = command_text.starts_with(kInWindow);
  if (in_window) command_text.erase(0, kInWindow.size());
  for (const Known& known : kKnown)
    if (command_text == known.text) return {known.meaning.role, known.meaning.deregistration_mode, in_window};
  return {};
}

}  // namespace startup
