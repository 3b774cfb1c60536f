#include <gtest/gtest.h>
#include <windows.h>

#include <process.h>
#include <sddl.h>

#include <cwchar>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "windows/com/wide_text.h"

namespace {

class ProgramFile {
 public:
  explicit ProgramFile(const wchar_t* name)
      : module_(LoadLibraryExW(name, nullptr, LOAD_LIBRARY_AS_DATAFILE)) {}

  std::string Resource(const wchar_t* name, const wchar_t* type) const {
    const HRSRC found = FindResourceW(module_.get(), name, type);
    if (!found) return {};
    const auto* bytes = static_cast<const char*>(LockResource(LoadResource(module_.get(), found)));
    return {bytes, SizeofResource(module_.get(), found)};
  }
  /// The oldest supported Windows, such as 6 and 1.
  std::pair<int, int> Subsystem() const {
    // The handle's low bits say how the file is mapped.
    const auto start = reinterpret_cast<std::uintptr_t>(module_.get()) & ~std::uintptr_t{3};
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(start);
    const auto* header = reinterpret_cast<const IMAGE_NT_HEADERS*>(start + static_cast<DWORD>(dos->e_lfanew));
    return {header->OptionalHeader.MajorSubsystemVersion, header->OptionalHeader.MinorSubsystemVersion};
  }
  /// The icon that Explorer shows: the first one.
  std::wstring FirstIcon() const {
    std::wstring first;
    EnumResourceNamesW(module_.get(), RT_GROUP_ICON, TakeName, reinterpret_cast<LONG_PTR>(&first));
    return first;
  }

 private:
  struct Free {
    void operator()(HMODULE module) const { FreeLibrary(module); }
  };
  static BOOL CALLBACK TakeName(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR taken) {
    *reinterpret_cast<std::wstring*>(taken) = IS_INTRESOURCE(name) ? L"a number" : name;
    return FALSE;
  }
  std::unique_ptr<std::remove_pointer_t<HMODULE>, Free> module_;
};

TEST(ProgramFiles, ShareOneVersionAndNeedNoElevation) {
  std::string first;
  for (const wchar_t* name : {L"QM5RFcPirConfigure.exe", L"LnsSimulator.exe", L"director.exe", L"qm5r.exe",
                              L"QM5RInstallerActions.dll"}) {
    SCOPED_TRACE(windows::ToUtf8(name));
    const ProgramFile file(name);
    const std::string version = file.Resource(MAKEINTRESOURCEW(1), RT_VERSION);
    const std::size_t numbers = version.find("\xBD\x04\xEF\xFE");
    ASSERT_NE(numbers, std::string::npos);
    if (first.empty()) first = version.substr(numbers, 24);
    EXPECT_EQ(version.substr(numbers, 24), first);
    const auto* text = reinterpret_cast<const char*>(name);
    EXPECT_NE(version.find(std::string(text, 2 * std::wcslen(name))), std::string::npos);
    const std::string manifest = file.Resource(MAKEINTRESOURCEW(1), RT_MANIFEST);
    EXPECT_EQ(file.Subsystem(), std::pair(6, 1));
    EXPECT_EQ(manifest.find("asInvoker") != std::string::npos, std::wcsstr(name, L".exe") != nullptr);
  }
}

/// While this exists, a machine key refuses values, subkeys and its deletion, as for a standard user.
class RefusingKey {
 public:
  explicit RefusingKey(const wchar_t* path, REGSAM view = KEY_WOW64_32KEY) {
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, path, 0, nullptr, 0, KEY_ALL_ACCESS | view, nullptr, &key_, nullptr);
    Allow(L"D:(D;;0x10006;;;WD)(A;;KA;;;WD)");
  }
  ~RefusingKey() {
    Allow(L"D:(A;;KA;;;WD)");
    RegCloseKey(key_);
  }
  RefusingKey(const RefusingKey&) = delete;
  RefusingKey& operator=(const RefusingKey&) = delete;

 private:
  void Allow(const wchar_t* rights) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    EXPECT_TRUE(
        ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &descriptor, nullptr));
    EXPECT_EQ(RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
    LocalFree(descriptor);
  }
  HKEY key_ = nullptr;
};

TEST(ProgramFiles, EndWithFiveIfRegistrationIsRefused) {
  const wchar_t* const plug_in = L"SOFTWARE\\LonWorks\\LCA\\Plug-Ins\\Korvell QM5R-FC PIR Configure";
  const auto end_of = [](const wchar_t* arguments) {
    return _wspawnl(_P_WAIT, L"QM5RFcPirConfigure.exe", L"QM5RFcPirConfigure.exe", arguments, nullptr);
  };
  {
    const RefusingKey key(plug_in);
    EXPECT_EQ(end_of(L"/regplugin"), 5);
    EXPECT_EQ(end_of(L"/deregplugin"), 5);
  }
  {
    const RefusingKey classes(L"SOFTWARE\\Classes");
    EXPECT_EQ(end_of(L"/regplugin"), 5);
  }
  {
    const RefusingKey of_the_class(L"SOFTWARE\\Classes\\QM5RFcPirConfigure.LNSPlugInAPI", 0);
    EXPECT_EQ(end_of(L"/regserver"), 5);
  }
  EXPECT_EQ(end_of(L"/deregplugin /deregmode:-1"), 0);
  EXPECT_NE(RegDeleteKeyExW(HKEY_LOCAL_MACHINE, plug_in, KEY_WOW64_32KEY, 0), ERROR_SUCCESS) << "it is gone";
}

TEST(ProgramFiles, ShowThePlugInsWindowIconInEverySize) {
  const ProgramFile file(L"QM5RFcPirConfigure.exe");
  EXPECT_EQ(file.FirstIcon(), L"WINDOW");
  const std::string group = file.Resource(L"WINDOW", RT_GROUP_ICON);
  std::vector<int> sizes;
  for (std::size_t entry = 6; entry + 14 <= group.size(); entry += 14)
    sizes.push_back(static_cast<unsigned char>(group[entry]));
  EXPECT_EQ(sizes, (std::vector{16, 20, 24, 32, 40, 48, 64, 0}));  // 0 means 256
}

TEST(ProgramFiles, ContainTheContactPagesPicture) {
  const ProgramFile file(L"QM5RFcPirConfigure.exe");
  const std::string page = file.Resource(L"ABOUT.HTM", RT_HTML);
  EXPECT_NE(page.find("src=\"WORLDMAP.GIF\""), std::string::npos);
  EXPECT_EQ(file.Resource(L"WORLDMAP.GIF", RT_HTML).substr(0, 6), "GIF89a");
}

}  // namespace
