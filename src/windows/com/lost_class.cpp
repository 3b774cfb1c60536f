#include "windows/com/lost_class.h"

#include <string>
#include <vector>

#include "windows/com/registration.h"
#include "windows/com/wide_text.h"

namespace windows::com {
namespace {

/// Null if the key is missing. `view` is KEY_WOW64_32KEY or KEY_WOW64_64KEY; a system with only one view
/// ignores it.
Key Open(HKEY parent, const std::wstring& path, REGSAM view) {
  HKEY opened = nullptr;
  const LSTATUS status = RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ | DELETE | view, &opened);
  return Key(status == ERROR_SUCCESS ? opened : nullptr);
}

/// The default value of a key below another; empty if there is none.
std::wstring TextOf(const Key& parent, const std::wstring& below) {
  std::vector<wchar_t> text(32768);
  auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  const LSTATUS status =
      parent ? RegGetValueW(parent.get(), below.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &size)
             : ERROR_FILE_NOT_FOUND;
  return status == ERROR_SUCCESS ? std::wstring(text.data()) : std::wstring();
}

std::vector<std::wstring> NamesBelow(const Key& key) {
  std::vector<std::wstring> names;
  wchar_t name[256];
  for (DWORD index = 0;; ++index) {
    DWORD length = 256;
    if (!key ||
        RegEnumKeyExW(key.get(), index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
      return names;
    names.emplace_back(name, length);
  }
}

/// The program in a registered command line; empty without quotes, because its end is then unclear.
std::wstring ProgramIn(const std::wstring& command) {
  const std::size_t end = command.find(L'"', 1);
  return command.starts_with(L'"') && end != std::wstring::npos ? command.substr(1, end - 1) : std::wstring();
}

/// Files on drives other than the computer's own may exist although this user cannot see them.
bool IsLost(const std::wstring& file) {
  if (file.size() < 3 || GetDriveTypeW(file.substr(0, 3).c_str()) != DRIVE_FIXED) return false;
  if (GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES) return false;
  return GetLastError() == ERROR_FILE_NOT_FOUND || GetLastError() == ERROR_PATH_NOT_FOUND;
}

/// Removes the lost files from a version of a type library; true if it has other files.
bool HasFilesAfterForgetting(const Key& version) {
  bool has_files = false;
  for (const std::wstring& language : NamesBelow(version))
    for (const wchar_t* platform : {L"\\win32", L"\\win64"}) {
      const std::wstring file = TextOf(version, language + platform);
      if (IsLost(file))
        RegDeleteTreeW(version.get(), (language + platform).c_str());
      else
        has_files |= !file.empty();
    }
  return has_files;
}

void ForgetLostLibrary(const std::wstring& id, REGSAM view) {
  const Key libraries = Open(HKEY_LOCAL_MACHINE, L"Software\\Classes\\TypeLib", view);
  const Key library = Open(libraries.get(), id, view);
  for (const std::wstring& version : NamesBelow(library))
    if (!HasFilesAfterForgetting(Open(library.get(), version, view)))
      RegDeleteTreeW(library.get(), version.c_str());
  if (library && NamesBelow(library).empty()) RegDeleteTreeW(libraries.get(), id.c_str());
}

}  // namespace

void ForgetLostClass(const CLSID& class_id) {
  const std::wstring id = ToWide(GuidText(class_id));
  for (const REGSAM view : {REGSAM{KEY_WOW64_32KEY}, REGSAM{KEY_WOW64_64KEY}}) {
    const Key classes = Open(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID", view);
    const std::wstring library = TextOf(classes, id + L"\\TypeLib");
    if (!library.empty()) ForgetLostLibrary(library, view);
    if (IsLost(ProgramIn(TextOf(classes, id + L"\\LocalServer32"))))
      RegDeleteTreeW(classes.get(), id.c_str());
  }
}

}  // namespace windows::com
