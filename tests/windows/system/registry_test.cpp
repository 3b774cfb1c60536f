#include "windows/system/registry.h"

#include <windows.h>

#include "registry/registry_contract.h"

namespace {

TEST(Registry, MeetsTheContract) {
  windows::WindowsRegistry registry;
  RegistryContract(registry).Run();
}

/// Other programs use the same key in the 32-bit view.
TEST(Registry, SharesOnlyTextsWithOtherPrograms) {
  constexpr const char* kKey = "SOFTWARE\\QM5R Registry Test";
  windows::WindowsRegistry machine;
  registry::CRegistry settings(machine, "test");
  settings.SetMachineSetting(kKey, "text", "3\u00AE0");
  HKEY key = nullptr;
  ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kKey, 0, KEY_READ | KEY_WRITE | KEY_WOW64_32KEY, &key),
            ERROR_SUCCESS);
  wchar_t text[9]{};
  DWORD type = 0, size = sizeof text;
  RegQueryValueExW(key, L"text", nullptr, &type, reinterpret_cast<BYTE*>(text), &size);
  EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
  EXPECT_STREQ(text, L"3\u00AE0");
  EXPECT_EQ(size, 3 * sizeof(wchar_t)) << "no terminating NUL";
  const DWORD number = 7;
  RegSetValueExW(key, L"number", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
  RegSetValueExW(key, L"expand", 0, REG_EXPAND_SZ, reinterpret_cast<const BYTE*>(L"%PATH%"), 14);
  RegCloseKey(key);
  EXPECT_EQ(settings.MachineSetting(kKey, "number") + settings.MachineSetting(kKey, "expand"), "");
  EXPECT_TRUE(settings.DeleteMachineKey(kKey));
}

}  // namespace
