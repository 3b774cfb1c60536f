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
  const std::string command_text = text::ToLower(text::Trim(arguments));
  for (const Known& known : kKnown)
    if (command_text == known.text) return known.meaning;
  return {};
}

}  // namespace startup
