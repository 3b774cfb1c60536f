#include "windows/system/program.h"

#include <gtest/gtest.h>

#include "windows/system/object_server_source.h"
#include "windows/system/registry.h"
#include "registry/registry.h"

namespace {

TEST(Program, KnowsItsFileAndHasNoForeignResources) {
  const windows::WindowsProgram program;
  EXPECT_EQ(program.ExecutableName(), "windows_system_tests");
  EXPECT_NE(program.Directory().find(':'), std::string::npos);
  EXPECT_NE(program.Directory().back(), '\\');
  EXPECT_EQ(program.StringResource(101), "");
  EXPECT_EQ(program.FileVersion().major, 0) << "a program without a version resource";
  EXPECT_NE(program.TimeOfDay(), "");
}

TEST(ObjectServerSource, TheMachineNamesTheObjectServer) {
  windows::WindowsRegistry machine;
  registry::CRegistry settings(machine, "test");
  constexpr const char* kKey = "SOFTWARE\\LonWorks\\LCA";
  const std::string before = settings.MachineSetting(kKey, "Object Server");
  settings.SetMachineSetting(kKey, "Object Server", "Nobody.Here");
  EXPECT_EQ(windows::ObjectServerProgId(machine), "Nobody.Here");
  EXPECT_THROW(windows::MakeObjectServer(machine), platform::Error);
  settings.SetMachineSetting(kKey, "Object Server", "");
  EXPECT_EQ(windows::ObjectServerProgId(machine), "LcaObjectServer.LcaObjectServer");
  settings.SetMachineSetting(kKey, "Object Server", before);
}

}  // namespace
