#include <gtest/gtest.h>

#include "headless/computer.h"
#include "startup/command_line.h"
#include "startup/identity.h"

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

TEST(Identity, IsReadFromTheExecutable) {
  const startup::Identity identity = startup::LoadIdentity(headless::BuiltInProgram({1, 2, 3}));
  EXPECT_EQ(identity.PlugInProgID, "QM5RFcPirConfigure.LNSPlugInAPI");
  EXPECT_EQ(identity.PlugInVersion, "1.2.3");
  EXPECT_EQ(identity.PlugInDescription, "Configure the Korvell QM5R-FC PIR series LonTalk\u00AE thermostat");
  EXPECT_EQ(identity.PlugInKey(), "SOFTWARE\\LonWorks\\LCA\\Plug-Ins\\Korvell QM5R-FC PIR Configure");
}

}  // namespace
