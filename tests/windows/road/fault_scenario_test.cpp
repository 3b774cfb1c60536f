// Processes that end, and keys that are deleted, while the plug-in works. Each case runs in its own Wine: see
// faults.sh.

#include "plug_in_user.h"

#include <tlhelp32.h>

#include "registry/registry.h"
#include "windows/system/registry.h"

namespace {

class FaultScenario : public PlugInUser {
 protected:
  /// By name: no other simulator runs in this Wine.
  static void KillSimulator() {
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    for (BOOL more = Process32FirstW(all, &entry); more; more = Process32NextW(all, &entry)) {
      if (lstrcmpiW(entry.szExeFile, L"LnsSimulator.exe") != 0) continue;
      const HANDLE process = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, entry.th32ProcessID);
      EXPECT_TRUE(TerminateProcess(process, 9));
      EXPECT_EQ(WaitForSingleObject(process, 5000), WAIT_OBJECT_0);
      CloseHandle(process);
    }
    CloseHandle(all);
  }
  void Edit() {
    Click(Fields().at(1));
    Key(VK_SHIFT, VK_TAB);
    Type("20.5");
    ExpectText(0, "20.5");
  }
};

TEST_F(FaultScenario, AnApplySurvivesTheEndOfTheObjectServer) {
  Edit();
  Knobs().SetLatency("write", 3000);
  Key(VK_MENU, 'A');
  ASSERT_TRUE(Eventually([&] { return Doing().starts_with("Updating "); }));
  KillSimulator();
  for (int i = 0; i < 2; ++i) {  // and without an object server
    const HWND box = Box(kCaption);
    ASSERT_TRUE(box);
    std::cout << "shown: " << Reads(box) << '\n';
    Press(box, IDOK);
    ExpectText(0, "20.5");
    ExpectEnabled(L"&Apply", true);
    if (i == 0) Key(VK_MENU, 'A');
  }
}

TEST_F(FaultScenario, WorksWithoutItsRegistryKey) {
  windows::WindowsRegistry machine;
  registry::CRegistry settings(machine, "");
  settings.DeleteMachineKey("SOFTWARE\\LonWorks\\LCA\\Plug-Ins\\Korvell QM5R-FC PIR Configure");
  Edit();
  Key(VK_MENU, 'A');
  ExpectEnabled(L"&Apply", false);
  Key(VK_MENU, 'R');
  ExpectText(0, "20.5");
}

}  // namespace
