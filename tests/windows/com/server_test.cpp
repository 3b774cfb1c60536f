#include <gtest/gtest.h>

#include "automation/convert.h"
#include "registered_sample.h"
#include "sample.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/local_server.h"
#include "windows/com/registration.h"
#include "windows/com/variant_conversion.h"

namespace windows::com {
namespace {

using platform::CallKind;

/// The default value of a key under the machine's classes, empty where there is none.
std::string MachineText(const std::string& key) {
  wchar_t text[300]{};
  LONG size = sizeof text;
  RegQueryValueW(HKEY_LOCAL_MACHINE, ToWide("Software\\Classes\\" + key).c_str(), text, &size);
  return ToUtf8(text);
}

TEST(Server, RegistersAllThatClientsLookUpAndRemovesIt) {
  const std::string id = GuidText(Sample::kClass), server = "CLSID\\" + id + "\\LocalServer32",
                    marshaller = "Interface\\" + GuidText(Sample::kEvents) + "\\ProxyStubClsid32";
  {
    const RegisteredSample registered;
    EXPECT_EQ(MachineText("Qm5r.ComSample\\CLSID"), id);
    EXPECT_EQ(MachineText(marshaller), "{00020420-0000-0000-C000-000000000046}");
    const std::string command = MachineText(server);
    EXPECT_TRUE(command.starts_with('"') && command.ends_with("test_server.exe\" /automation")) << command;
  }
  ServerRegistration broken{Sample::kClass, "Qm5r.ComSample", "", "C:\\no such program.exe"};
  broken.has_type_library = true;
  EXPECT_THROW(RegisterServer(broken), platform::Error);
  for (const std::string& key : {std::string("Qm5r.ComSample"), server, marshaller})
    EXPECT_EQ(MachineText(key), "") << key;
}

TEST(Server, SpeaksToScripts) {
  const RegisteredSample registered;
  EXPECT_EQ(RegisteredSample::Run("cscript.exe", "windows_com_test_client.vbs"), 7);
}

HANDLE ProcessOf(platform::LateBound& sample) {
  const auto id = static_cast<DWORD>(automation::ToInteger(sample.Invoke({"ProcessId"}, CallKind::Get, {})));
  return OpenProcess(SYNCHRONIZE, FALSE, id);
}

TEST(Server, LivesAsLongAsAnyObjectIsHeld) {
  const RegisteredSample registered;
  auto sample = CreateObject("Qm5r.ComSample"), second = CreateObject("Qm5r.ComSample");
  const HANDLE process = ProcessOf(*sample);
  auto items = std::get<platform::LateBoundPtr>(second->Invoke({"Items"}, CallKind::Get, {}));
  sample.reset();
  second.reset();
  EXPECT_EQ(Describe(items->Invoke({"Count"}, CallKind::Get, {})), "integer 3");
  items.reset();
  EXPECT_EQ(WaitForSingleObject(process, 20000), WAIT_OBJECT_0);
  EXPECT_EQ(RegisteredSample::Run("windows_com_test_server.exe", "-Embedding /impatient"), 0);
}

TEST(Server, ItsDeathIsAnErrorAndNoMore) {
  const RegisteredSample registered;
  auto sample = CreateObject("Qm5r.ComSample");
  const HANDLE process = ProcessOf(*sample);
  auto subscription = sample->Advise([](auto, auto) {});
  for (int call = 0; call < 2; ++call)
    EXPECT_THROW(sample->Invoke({"Die"}, CallKind::Method, {}), platform::Error);
  EXPECT_EQ(WaitForSingleObject(process, 20000), WAIT_OBJECT_0);
  EXPECT_THROW(sample->Advise([](auto, auto) {}), platform::Error);
  EXPECT_NO_THROW(subscription.reset());
  EXPECT_TRUE(CreateObject("Qm5r.ComSample"));
}

TEST(Server, ItsOwnerDecidesWhenToQuit) {
  std::string log;
  auto door = ToDispatch(std::make_shared<Sample>());
  LocalServer* running = nullptr;
  const auto unused = [&] {
    running->QuitUnlessUsed();
    // A client that was on its way: this attempt to quit does not end the loop.
    if (log.empty()) door = ToDispatch(std::make_shared<Sample>());
    log += "unused ";
  };
  LocalServer server({.id = Sample::kClass, .make = [] { return std::make_shared<Sample>(); }},
                     {.on_last_object_released = unused, .linger = std::chrono::milliseconds(1)});
  running = &server;
  door.Reset();
  int timers = 0;
  EXPECT_EQ(server.Run([&](const MSG& message) {
    if (message.message == WM_APP) door.Reset();
    if (message.message == WM_TIMER && ++timers == 2) PostThreadMessageW(GetCurrentThreadId(), WM_APP, 0, 0);
    return false;
  }),
            0);
  EXPECT_EQ(log, "unused unused ");
}

TEST(Server, KnowsHowItWasStarted) {
  const std::pair<const char*, ServerStart> cases[]{
      {"/automation  -EMBEDDING", ServerStart::ByCom},
      {"/regplugin", ServerStart::ByHand},
      {" /RegServer", ServerStart::Register},
      {"-unregserver", ServerStart::Unregister},
  };
  for (const auto& [arguments, start] : cases) EXPECT_EQ(ServerStartOf(arguments), start) << arguments;
}

}  // namespace
}  // namespace windows::com
