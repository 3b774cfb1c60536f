// The program's own registration, as a user, an installer and a director bring it about: command lines, the
// registration window by real clicks, and the director's commands. registration.sh makes the computer that
// this works on.

#include "plug_in_user.h"

namespace {

constexpr const wchar_t* kKey = L"SOFTWARE\\LonWorks\\LCA\\Plug-Ins\\Korvell QM5R-FC PIR Configure";
constexpr const wchar_t* kClass = L"SOFTWARE\\Classes\\QM5RFcPirConfigure.LNSPlugInAPI";
const std::string kProgId = "QM5RFcPirConfigure.LNSPlugInAPI";

class RegistrationRoad : public PlugInUser {
 protected:
  static void SetUpTestSuite() {}
  void SetUp() override {}
  void TearDown() override { EXPECT_FALSE(FindWindowW(nullptr, kCaption)) << "a window stayed open"; }

  static std::wstring Folder() {
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring own = path;
    return own.substr(0, own.rfind(L'\\') + 1);
  }

  /// Starts a program of the build with exactly this command line behind its name.
  static HANDLE Start(const std::wstring& program, const std::wstring& arguments) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    std::wstring line = L"\"" + Folder() + program + L"\"" + arguments;
    EXPECT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                               &process));
    CloseHandle(process.hThread);
    return process.hProcess;
  }
  static DWORD Wait(HANDLE process) {
    EXPECT_EQ(WaitForSingleObject(process, 30000), WAIT_OBJECT_0) << "it did not end";
    DWORD code = 99;
    GetExitCodeProcess(process, &code);
    CloseHandle(process);
    return code;
  }
  static void RunSilently(const std::wstring& arguments) {
    const HANDLE program = Start(L"QM5RFcPirConfigure.exe", arguments);
    EXPECT_EQ(Wait(program), 0u);
  }
  void OpenWindow(const std::wstring& arguments = L"") {
    program_ = Start(L"QM5RFcPirConfigure.exe", arguments);
    ASSERT_TRUE(Eventually([this] { return (window_ = FindWindowW(nullptr, kCaption)) != nullptr; }));
    ASSERT_TRUE(Eventually([this] { return IsWindowVisible(window_); }));
    BringToFront();
  }
  void ClickButton(const wchar_t* caption) {
    const HWND button = FindWindowExW(window_, nullptr, L"Button", caption);
    ASSERT_TRUE(button);
    ClickWindow(button);
  }

  /// The bytes of a value of the plug-in's key, behind its type ("1:" is a string); "" where there is none.
  static std::string Stored(const wchar_t* value) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_READ | KEY_WOW64_32KEY, &key)) return "";
    char bytes[256]{};
    DWORD size = sizeof bytes, type = 0;
    const LSTATUS status = RegQueryValueExA(key, windows::ToUtf8(value).c_str(), nullptr, &type,
                                            reinterpret_cast<BYTE*>(bytes), &size);
    RegCloseKey(key);
    return status ? "" : std::to_string(type) + ":" + std::string(bytes, size);
  }
  static void Store(const wchar_t* value, const std::wstring& text) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, nullptr, 0, KEY_WRITE | KEY_WOW64_32KEY, nullptr,
                              &key, nullptr),
              0);
    RegSetValueExW(key, value, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                   static_cast<DWORD>(text.size() * sizeof(wchar_t)));
    RegCloseKey(key);
  }
  static bool ClassRegistered() {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kClass, 0, KEY_READ, &key)) return false;
    RegCloseKey(key);
    return true;
  }
  void ExpectRegistered(bool registered) {
    EXPECT_TRUE(Eventually([&] { return ClassRegistered() == registered; }));
    EXPECT_EQ(Stored(L""), registered ? "1:" + kProgId : "");
  }

  HANDLE program_ = nullptr;
};

TEST_F(RegistrationRoad, CommandLinesAreSilentAndExact) {
  ExpectRegistered(false);
  RunSilently(L"   /REGPlugin  ");
  ExpectRegistered(true);
  const std::string version = Stored(L"Version");
  const std::pair<const wchar_t*, std::string> values[] = {
      {L"Name", "Korvell QM5R-FC PIR Configure"},
      {L"Description", "Configure the Korvell QM5R-FC PIR series LonTalk\xAE thermostat"},
      {L"Scope", "2"},
      {L"ManufacturerName", "Korvell Inc."},
      {L"LcaVersion", "3.0"},
      {L"Prelaunch", "-1"},
      {L"MultiObject", "-1"},
      {L"SingleInstance", "1"},
  };
  for (const auto& [value, text] : values) EXPECT_EQ(Stored(value), "1:" + text) << windows::ToUtf8(value);
  const auto plug_in = windows::com::CreateObject(kProgId);
  EXPECT_EQ("1:" + automation::ToText(plug_in->Invoke({"Version"}, platform::CallKind::Get, {})), version);
  EXPECT_EQ(std::count(version.begin(), version.end(), '.'), 2);

  Store(L"Version", L"0.0.1");
  RunSilently(L" /regplugin");
  EXPECT_EQ(Stored(L"Version"), version);
  Store(L"Version", L"99.0.0");
  Store(L"Name", L"newer");
  RunSilently(L" /regplugin");
  EXPECT_EQ(Stored(L"Name").substr(0, 4), "1:ne") << "a newer version was overwritten";
}

TEST_F(RegistrationRoad, TheMinimalRemovalTakesClassAndKey) {
  RunSilently(L" /deregplugin /deregmode:-1");
  ExpectRegistered(false);
}

TEST_F(RegistrationRoad, TheWindowDoesOneThingAndCloses) {
  const std::string registered = "Plug-in registered as " + kProgId;
  for (const std::string& text : {registered, "Updated version of plug-in registered as " + kProgId}) {
    OpenWindow();
    ClickButton(L"&Register");
    ExpectBox(kCaption, text, "<OK>", IDOK);
    EXPECT_EQ(Wait(program_), 0u);
    ExpectRegistered(true);
  }
  Store(L"Version", L"99.0.0");
  OpenWindow();
  Key(VK_MENU, 'R');
  ExpectBox(kCaption, "A newer version of this plug-in is already registered", "<OK>", IDOK);
  EXPECT_EQ(Wait(program_), 0u);

  const std::string name = "Korvell QM5R-FC PIR Configure";
  for (const std::string& text : {"Plug-in " + name + " deregistered",
                                  "Plug-in " + name + " does not exisit in the Windows registery"}) {
    OpenWindow();
    Click(FindWindowExW(window_, nullptr, L"ComboBox", nullptr));
    Key(VK_ESCAPE);
    Key(VK_UP);
    ClickButton(L"&Deregister");
    ExpectBox(kCaption, text, "<OK>", IDOK);
    EXPECT_EQ(Wait(program_), 0u);
  }
  EXPECT_TRUE(Eventually([] { return !ClassRegistered(); }));
}

TEST_F(RegistrationRoad, UnknownCommandLinesOpenTheWindow) {
  for (const wchar_t* arguments :
       {L" /deregplugin /deregmode:2", L" /regplugin /x", L" /deregplugin  /deregmode:0"}) {
    OpenWindow(arguments);
    Key(VK_ESCAPE);
    EXPECT_EQ(Wait(program_), 0u);
  }
  EXPECT_EQ(Stored(L""), "");
}

/// In Demo Quarry the template has to be made: file found, converted and imported. It goes with the plug-in.
TEST_F(RegistrationRoad, CommandsComeToANetworkAndGoWithThePlugIn) {
  simulator_ = windows::com::CreateObject("LnsSimulator.LcaObjectServer");
  Knobs().AddFault({"", "Demo Quarry", "TemplateLibrary", 0, 17008});
  RunSilently(L" /regplugin");
  ExpectRegistered(true);
  const HANDLE failing = Start(L"director.exe", L" register \"Demo Quarry\"");
  const HWND told = Box(kTitle);
  ASSERT_TRUE(told);
  EXPECT_EQ(BoxButtons(told), "<OK>");
  Press(told, IDOK);
  EXPECT_EQ(Wait(failing), 2u);
  Knobs().ClearFaults();
  for (const std::wstring network : {L"Demo Quarry", L"Demo Islands"}) {
    RunSilently(L" /regplugin");
    ExpectRegistered(true);
    const HANDLE director = Start(L"director.exe", L" register \"" + network + L"\"");
    const HWND box = Box(kTitle);
    ASSERT_TRUE(box);
    const std::string question =
        "Do you wish to make Korvell QM5R-FC PIR Device Configure the default action for Korvell QM5R-FC PIR";
    EXPECT_EQ(BoxText(box).substr(0, question.size()), question);
    EXPECT_EQ(BoxButtons(box), "<Yes><No>");
    Press(box, IDNO);
    EXPECT_EQ(Wait(director), 0u);
    if (network == L"Demo Quarry") {
      RunSilently(L" /deregplugin /deregmode:1");
    } else {
      OpenWindow();
      Key(VK_MENU, 'D');
      ExpectBox(kCaption, "Plug-in Korvell QM5R-FC PIR Configure deregistered", "<OK>", IDOK);
      EXPECT_EQ(Wait(program_), 0u);
    }
    ExpectRegistered(false);
  }
  simulator_.reset();
}

}  // namespace
