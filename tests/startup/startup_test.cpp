#include <gtest/gtest.h>

#include "startup/command_line.h"

namespace {

using Role = startup::CommandLine::Role;

TEST(CommandLine, IsComparedAsAWhole) {
  const std::tuple<const char*, Role, int> cases[] = {
      {"/regplugin", Role::RegisterPlugIn, -1},
      {"  /REGPLUGIN  ", Role::RegisterPlugIn, -1},
      {"/deregplugin", Role::DeregisterPlugIn, 0},
      {"/DeregPlugin /DeregMode:-1", Role::DeregisterPlugIn, -1},
      {"/deregplugin /deregmode:0", Role::DeregisterPlugIn, 0},
      {"/deregplugin /deregmode:1", Role::DeregisterPlugIn, 1},
      {"", Role::RegistrationWindow, -1},
      {"/deregplugin /deregmode:2", Role::RegistrationWindow, -1},
      {"/deregplugin  /deregmode:0", Role::RegistrationWindow, -1},
      {"/Window /DeregPlugin /DeregMode:1", Role::DeregisterPlugIn, 1},
      {"/window", Role::RegistrationWindow, -1},
  };
  for (const auto& [text, role, mode] : cases) {
    const startup::CommandLine line = startup::ParseCommandLine(text);
    EXPECT_EQ(line.role, role) << text;
    EXPECT_EQ(line.deregistration_mode, mode) << text;
  }
}

}  // namespace
