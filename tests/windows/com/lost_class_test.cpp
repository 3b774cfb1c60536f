#include "windows/com/lost_class.h"

#include <windows.h>

#include <objbase.h>

#include <gtest/gtest.h>

#include "support/error_of.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/registration.h"

namespace windows::com {
namespace {

/// The default value of a key below one of the machine's classes, as 32-bit or 64-bit programs see it.
std::wstring TextOf(REGSAM view, const std::wstring& parent, const std::wstring& below,
                    const wchar_t* text = nullptr) {
  HKEY opened = nullptr;
  RegOpenKeyExW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + parent).c_str(), 0, KEY_ALL_ACCESS | view,
                &opened);
  const Key key(opened);
  if (text) RegSetValueW(opened, below.c_str(), REG_SZ, text, 0);
  wchar_t found[300]{};
  LONG size = sizeof found;
  RegQueryValueW(opened, below.c_str(), found, &size);
  return found;
}

TEST(LostClass, IsRemovedFromItsViewOnlyIfTheProgramFileIsGone) {
  if (sizeof(void*) == 4) GTEST_SKIP() << "32-bit Wine has only one view";
  const std::wstring id = L"{5E1F0C52-7B0E-4A39-9D1C-43078A552E60}", library = id + L"\\1.0",
                     files = library + L"\\0\\win";
  const wchar_t *here = L"C:\\windows\\explorer.exe", *gone = L"C:\\windows\\gone.exe",
                *away = L"Q:\\gone.exe";
  const std::tuple<const wchar_t*, const wchar_t*, std::wstring> cases[]{
      {away, away, L"32 64 library"},
      {here, here, L"32 64 library"},
      {gone, here, L"64 library"},
      {here, gone, L"32 library"},
      {gone, gone, L""},
  };
  CLSID class_id;
  CLSIDFromString(id.c_str(), &class_id);
  for (const auto& [file32, file64, expected] : cases) {
    const std::tuple<REGSAM, std::wstring, std::wstring> programs[]{{KEY_WOW64_32KEY, L"32", file32},
                                                                    {KEY_WOW64_64KEY, L"64", file64}};
    TextOf(KEY_WOW64_64KEY, L"TypeLib", library, L"library");
    for (const auto& [view, bits, file] : programs) {
      TextOf(view, L"CLSID", id + L"\\LocalServer32", (L"\"" + file + L"\" /x").c_str());
      TextOf(view, L"CLSID", id + L"\\TypeLib", id.c_str());
      TextOf(view, L"TypeLib", files + bits, file.c_str());
    }
    ForgetLostClass(class_id);
    std::wstring found;
    for (const auto& [view, bits, file] : programs) {
      const bool listed = !TextOf(view, L"TypeLib", files + bits).empty();
      if (!TextOf(view, L"CLSID", id + L"\\LocalServer32").empty()) found += bits + L" ";
      EXPECT_EQ(listed, found.ends_with(bits + L" ")) << "the class and its entry in the library";
    }
    EXPECT_EQ(found + TextOf(KEY_WOW64_64KEY, L"TypeLib", library), expected);
  }
}

TEST(CreateObject, NamesTheProgramThatCanLoadTheControl) {
  if (sizeof(void*) == 4) GTEST_SKIP() << "32-bit Wine has only one view";
  const std::wstring id = L"{0B7C5D1E-94A2-4F0B-8A63-5E1D2C7F9A10}", file = id + L"\\InprocServer32";
  TextOf(0, L"", L"Qm5r.OtherBits\\CLSID", id.c_str());
  const auto failure = [] { return ErrorOf([] { CreateObject("Qm5r.OtherBits"); }); };
  const platform::Error unknown = failure();
  EXPECT_EQ(unknown.number(), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(unknown.description().find("32-bit"), std::string::npos) << unknown.description();
  TextOf(KEY_WOW64_32KEY, L"CLSID", file, L"C:\\control.ocx");
  const platform::Error known = failure();
  RegDeleteKeyExW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\CLSID\\" + file).c_str(), KEY_WOW64_32KEY, 0);
  RegDeleteKeyExW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\CLSID\\" + id).c_str(), KEY_WOW64_32KEY, 0);
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\Qm5r.OtherBits");
  EXPECT_EQ(known.number(), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(known.description(),
            "Cannot create the object \"Qm5r.OtherBits\": it is a 32-bit control, which a 64-bit program "
            "cannot load. Use the 32-bit program.");
}

}  // namespace
}  // namespace windows::com
