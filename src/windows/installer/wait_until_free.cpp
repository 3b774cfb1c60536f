// An action of the installation packages: waits until the programs are no longer in use.

#include <windows.h>

#include <msi.h>
#include <msiquery.h>
#include <tlhelp32.h>

#include <cwchar>
#include <string>

#include "windows/com/owners.h"

namespace {

constexpr const wchar_t* kPrograms[] = {L"QM5RFcPirConfigure.exe", L"qm5r.exe"};
constexpr wchar_t kWaiting[] = L"Waiting until Korvell QM5R-FC PIR Configure is closed";
constexpr wchar_t kInUse[] =
    L"Korvell QM5R-FC PIR Configure is in use. Close its windows and the network tool that uses it, wait "
    L"until qm5r has ended, then try again.";
/// Without data the action waits only for copies of the programs.
constexpr unsigned long kSecondsWithoutData = 30;
constexpr DWORD kPollMilliseconds = 200;

/// Returns the user's answer, or 0 if there is none. A message shows its first field; the start of an action
/// has its name there and its text in the second field.
int Show(MSIHANDLE install, int kind, const wchar_t* text) {
  PMSIHANDLE record = MsiCreateRecord(2);
  MsiRecordSetStringW(record, 0, L"[1]");
  MsiRecordSetStringW(record, 1, text);
  MsiRecordSetStringW(record, 2, text);
  return MsiProcessMessage(install, static_cast<INSTALLMESSAGE>(kind), record);
}

std::wstring Property(MSIHANDLE install, const wchar_t* name) {
  std::wstring value(1, L'\0');
  DWORD length = 0;
  if (MsiGetPropertyW(install, name, value.data(), &length) != ERROR_MORE_DATA) return {};
  value.resize(++length);
  if (MsiGetPropertyW(install, name, value.data(), &length) != ERROR_SUCCESS) return {};
  value.resize(length);
  return value;
}

/// In any session and any folder, as all plug-ins share the class.
bool IsRunning() {
  const windows::Handle processes = windows::Own(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W process{};
  process.dwSize = sizeof process;
  if (!processes || !Process32FirstW(processes.get(), &process)) return false;
  do {
    for (const wchar_t* program : kPrograms)
      if (CompareStringOrdinal(process.szExeFile, -1, program, -1, TRUE) == CSTR_EQUAL) return true;
  } while (Process32NextW(processes.get(), &process));
  return false;
}

/// A director may hold the file for its type library after the program has ended. Detecting this requires
/// write access to the file, which the elevated actions have.
bool IsHeld(const std::wstring& file) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const windows::Handle opened = windows::Own(
      CreateFileW(file.c_str(), GENERIC_WRITE | DELETE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
  return !opened && GetLastError() == ERROR_SHARING_VIOLATION;
}

}  // namespace

/// Returns when no process runs the programs or holds the plug-in's file. After the given time asks the user
/// whether to keep waiting; if nobody can be asked, the installation fails. Its data are "seconds;path of the
/// file": before the installation a property, in the deferred action its data.
extern "C" UINT __stdcall WaitUntilFree(MSIHANDLE install) {
  const bool elevated = MsiGetMode(install, MSIRUNMODE_SCHEDULED) || MsiGetMode(install, MSIRUNMODE_ROLLBACK);
  const std::wstring data = Property(install, elevated ? L"CustomActionData" : L"WaitBeforeRemoving");
  const unsigned long seconds = data.empty() ? kSecondsWithoutData : std::wcstoul(data.c_str(), nullptr, 10);
  const ULONGLONG patience = 1000ULL * seconds;
  const std::wstring file = data.substr(data.find(L';') + 1);

  ULONGLONG since = GetTickCount64();
  for (bool shown = false; IsRunning() || IsHeld(file); shown = true) {
    const int answer =
        Show(install, shown ? INSTALLMESSAGE_ACTIONDATA : INSTALLMESSAGE_ACTIONSTART, kWaiting);
    if (answer == IDCANCEL) return ERROR_INSTALL_USEREXIT;
    if (GetTickCount64() - since < patience) {
      Sleep(kPollMilliseconds);
      continue;
    }
    switch (Show(install, INSTALLMESSAGE_USER | MB_RETRYCANCEL | MB_ICONWARNING, kInUse)) {
      case IDRETRY:
        since = GetTickCount64();
        break;
      case IDCANCEL:
        return ERROR_INSTALL_USEREXIT;
      default:
        return ERROR_INSTALL_FAILURE;
    }
  }
  return ERROR_SUCCESS;
}
