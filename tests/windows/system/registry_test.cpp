#include "windows/system/registry.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

#include "registry/registry_contract.h"

namespace {

constexpr wchar_t kKey[] = L"SOFTWARE\\QM5R Registry Test";

/// The value as other programs see it, in the view of 32-bit programs.
struct Raw {
  DWORD type = 0;
  std::vector<BYTE> data;
};
Raw ReadRaw(const wchar_t* value) {
  Raw raw;
  DWORD size = 0;
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_READ | KEY_WOW64_32KEY, &key) != ERROR_SUCCESS)
    return raw;
  RegQueryValueExW(key, value, nullptr, &raw.type, nullptr, &size);
  raw.data.resize(size);
  RegQueryValueExW(key, value, nullptr, &raw.type, raw.data.data(), &size);
  RegCloseKey(key);
  return raw;
}

TEST(Registry, Contract) {
  windows::WindowsRegistry registry;
  RegistryContract(registry).Run();
}

TEST(Registry, StoresTheCharactersWithoutATerminatingNul) {
  windows::WindowsRegistry machine;
  registry::CRegistry settings(machine, "test");
  settings.SetMachineSetting("SOFTWARE\\QM5R Registry Test", "LcaVersion", "3.0");
  const Raw raw = ReadRaw(L"LcaVersion");
  EXPECT_EQ(raw.type, static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(raw.data, (std::vector<BYTE>{'3', 0, '.', 0, '0', 0}))
      << "three characters, as the system keeps them";
  EXPECT_TRUE(settings.DeleteMachineKey("SOFTWARE\\QM5R Registry Test"));
}

TEST(Registry, OtherTypesReadAsEmpty) {
  windows::WindowsRegistry machine;
  registry::CRegistry settings(machine, "test");
  settings.SetMachineSetting("SOFTWARE\\QM5R Registry Test", "text", "x");
  HKEY key = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_WRITE | KEY_WOW64_32KEY, &key), ERROR_SUCCESS);
  const DWORD number = 7;
  RegSetValueExW(key, L"number", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
  RegSetValueExW(key, L"expand", 0, REG_EXPAND_SZ, reinterpret_cast<const BYTE*>(L"%PATH%"), 14);
  RegCloseKey(key);
  EXPECT_EQ(settings.MachineSetting("SOFTWARE\\QM5R Registry Test", "number"), "");
  EXPECT_EQ(settings.MachineSetting("SOFTWARE\\QM5R Registry Test", "expand"), "");
  EXPECT_TRUE(settings.DeleteMachineKey("SOFTWARE\\QM5R Registry Test"));
}

}  // namespace
