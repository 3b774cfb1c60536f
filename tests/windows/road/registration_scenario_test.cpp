// The program's own registration by a user, an installer and a director: command lines, the registration
// window with real clicks, and the director's commands. registration.sh prepares the computer.

#include "platform/error.h"
#include "plug_in_user.h"
#include "registry/registry.h"
#include "windows/system/registry.h"

namespace {

constexpr const char* kKey = "SOFTWARE\\LonWorks\\LCA\\Plug-Ins\\Korvell QM5R-FC PIR Configure";
constexpr const wchar_t* kClass = L"SOFTWARE\\Classes\\QM5RFcPirConfigure.LNSPlugInAPI";
const std::string kProgId = "QM5RFcPirConfigure.LNSPlugInAPI";

class RegistrationScenario : public PlugInUser {
 protected:
  static void SetUpTestSuite() {}
  void SetUp() override {}
  void TearDown() override { EXPECT_FALSE(FindWindowW(nullptr, kCaption)) << "a window stayed open"; }

  static HANDLE Start(const std::wstring& program, const std::wstring& arguments) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    std::wstring line = L"\"" + program + L"\"" + arguments;
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
    EXPECT_EQ(Wait(Start(L"QM5RFcPirConfigure.exe", arguments)), 0u);
  }
  void OpenWindow() {
    program_ = Start(L"QM5RFcPirConfigure.exe", L"");
    ASSERT_TRUE(Eventually([this] { return (window_ = FindWindowW(nullptr, kCaption)) != nullptr; }));
    ASSERT_TRUE(Eventually([this] { return IsWindowVisible(window_); }));
    BringToFront();
  }
  void ClickButton(const wchar_t* caption) {
    ClickWindow(FindWindowExW(window_, nullptr, L"Button", caption));
  }

  /// Registers with director.exe and answers the box, which begins with `text` and has these buttons.
  void RegisterCommands(const std::wstring& network, const std::string& text, const std::string& buttons,
                        WORD answer, DWORD exit_code) {
    const HANDLE director = Start(L"director.exe", L" register \"" + network + L"\"");
    const HWND box = Box(kTitle);
    ASSERT_TRUE(box);
    EXPECT_PRED2(Both, Reads(box).starts_with(text), Reads(box).ends_with(buttons)) << Reads(box);
    Press(box, answer);
    EXPECT_EQ(Wait(director), exit_code);
  }

  std::string Stored(const char* value) const { return settings_.MachineSetting(kKey, value); }
  static bool ClassRegistered() {
    return RegQueryValueW(HKEY_LOCAL_MACHINE, kClass, nullptr, nullptr) == ERROR_SUCCESS;
  }
  void ExpectRegistered(bool registered) {
    EXPECT_TRUE(Eventually([&] { return ClassRegistered() == registered; }));
    EXPECT_EQ(Stored(""), registered ? kProgId : "");
  }

  windows::WindowsRegistry machine_;
  registry::CRegistry settings_{machine_, "test"};
  HANDLE program_ = nullptr;
};

TEST_F(RegistrationScenario, CommandLinesAreSilentAndExact) {
  ExpectRegistered(false);
  RunSilently(L"   /REGPlugin  ");
  ExpectRegistered(true);
  const std::string version = Stored("Version");
  const std::pair<const char*, const char*> values[] = {
      {"Name", "Korvell QM5R-FC PIR Configure"},
      {"Description", "Configure the Korvell QM5R-FC PIR series LonTalk\u00AE thermostat"},
      {"Scope", "2"},
      {"ManufacturerName", "Korvell Inc."},
      {"LcaVersion", "3.0"},
      {"Prelaunch", "-1"},
      {"MultiObject", "-1"},
      {"SingleInstance", "1"},
  };
  for (const auto& [value, text] : values) EXPECT_EQ(Stored(value), text) << value;
  EXPECT_EQ(automation::ToText(
                windows::com::CreateObject(kProgId)->Invoke({"Version"}, platform::CallKind::Get, {})),
            version);
  EXPECT_EQ(std::count(version.begin(), version.end(), '.'), 2);

  RunSilently(L" /deregplugin /deregmode:-1");
  ExpectRegistered(false);
}

TEST_F(RegistrationScenario, TheWindowPerformsOneActionAndCloses) {
  OpenWindow();
  ExpectRegistered(false);
  ClickButton(L"&Register");
  ExpectBox(kCaption, "Plug-in registered as " + kProgId + " <OK>", IDOK);
  EXPECT_EQ(Wait(program_), 0u);
  ExpectRegistered(true);

  OpenWindow();
  // The list has the focus. If its items are not open, Escape closes the window.
  const HWND modes = FindWindowExW(window_, nullptr, L"ComboBox", nullptr);
  const auto becomes = [&](UINT asked, LRESULT answer) {
    return Eventually([&] { return SendMessageW(modes, asked, 0, 0) == answer; });
  };
  const LRESULT mode = SendMessageW(modes, CB_GETCURSEL, 0, 0);
  Key(VK_F4);
  ASSERT_TRUE(becomes(CB_GETDROPPEDSTATE, TRUE));
  Key(VK_ESCAPE);
  ASSERT_TRUE(becomes(CB_GETDROPPEDSTATE, FALSE));
  Key(VK_UP);
  ASSERT_TRUE(becomes(CB_GETCURSEL, mode - 1));
  ClickButton(L"&Deregister");
  ExpectBox(kCaption, "Plug-in Korvell QM5R-FC PIR Configure deregistered <OK>", IDOK);
  EXPECT_EQ(Wait(program_), 0u);
  EXPECT_TRUE(Eventually([] { return !ClassRegistered(); }));
}

/// In Demo Quarry the plug-in must find, convert and import the file for a new template, and remove it at the
/// end.
TEST_F(RegistrationScenario, CommandsAreAddedToANetworkAndRemovedWithThePlugIn) {
  // The simulator of an earlier step may still be ending and refuse.
  ASSERT_TRUE(Eventually([this] {
    platform::IgnoreFailure(
        [this] { simulator_ = windows::com::CreateObject("LnsSimulator.LcaObjectServer"); });
    return simulator_ != nullptr;
  }));
  Knobs().AddFault({"", "Demo Quarry", "TemplateLibrary", 0, 17008});
  RunSilently(L" /regplugin");
  ExpectRegistered(true);
  RegisterCommands(L"Demo Quarry", "Error adding command Korvell", " <OK>", IDOK, 2);
  Knobs().ClearFaults();
  for (const std::wstring network : {L"Demo Quarry", L"Demo Islands"}) {
    RunSilently(L" /regplugin");
    ExpectRegistered(true);
    const std::string question =
        "Do you wish to make Korvell QM5R-FC PIR Device Configure the default action for Korvell QM5R-FC PIR";
    RegisterCommands(network, question, " <Yes><No>", IDNO, 0);
    if (network == L"Demo Quarry") {
      RunSilently(L" /deregplugin /deregmode:1");
    } else {
      OpenWindow();
      Key(VK_MENU, 'D');
      ExpectBox(kCaption, "Plug-in Korvell QM5R-FC PIR Configure deregistered <OK>", IDOK);
      EXPECT_EQ(Wait(program_), 0u);
    }
    ExpectRegistered(false);
  }
  simulator_.reset();
}

}  // namespace
