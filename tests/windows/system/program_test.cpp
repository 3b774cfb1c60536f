#include "windows/system/program.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "registry/registry.h"
#include "windows/system/registry.h"
#include "windows/system/shell.h"

namespace {

TEST(Program, ReadsItsFile) {
  const windows::WindowsProgram program;
  EXPECT_EQ(program.ExecutableName(), "windows_system_tests");
  EXPECT_NE(program.Directory().back(), '\\');
  EXPECT_EQ(program.StringResource(101) + std::to_string(program.FileVersion().major), "0")
      << "it has no resources";
}

TEST(Shell, ReportsWhetherAProgramSucceeded) {
  for (const char* code : {"0", "3"}) {
    const auto started = windows::WindowsShell().Start("cmd", std::string("/c exit ") + code,
                                                       platform::Shell::Show::MinimizedWithoutFocus);
    while (started->Running()) Sleep(10);
    EXPECT_EQ(started->Succeeded(), *code == '0');
  }
}

TEST(ObjectServerSource, ReadsTheNameFromTheRegistry) {
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
