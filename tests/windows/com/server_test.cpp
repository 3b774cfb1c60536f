#include <gtest/gtest.h>
#include <process.h>

#include <thread>

#include "automation/convert.h"
#include "sample.h"
#include "support/conditions.h"
#include "windows/com/adapter.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/events.h"
#include "windows/com/local_server.h"
#include "windows/com/registration.h"
#include "windows/com/variant_conversion.h"
#include "windows/com/wide_text.h"

namespace windows::com {
namespace {

using platform::CallKind;
using platform::LateBoundPtr;
using platform::Value;

std::intptr_t RunProgram(const char* program, const char* arguments) {
  return _spawnlp(_P_WAIT, program, program, arguments, nullptr);
}

/// Registers the sample server, in the tests' folder, while this exists.
struct RegisteredSample {
  RegisteredSample() {
    // An earlier test's server may be ending, and in Wine a client that finds its class then fails.
    while (const HANDLE serving = OpenMutexW(SYNCHRONIZE, FALSE, Sample::kServing)) {
      CloseHandle(serving);
      Sleep(20);
    }
    EXPECT_EQ(RunProgram("windows_com_test_server.exe", "/RegServer"), 0);
  }
  ~RegisteredSample() { EXPECT_EQ(RunProgram("windows_com_test_server.exe", "-unregserver"), 0); }
};

struct Server : testing::Test {
  RegisteredSample registered;
  LateBoundPtr sample = CreateObject("Qm5r.ComSample");
  HANDLE process = OpenProcess(
      SYNCHRONIZE, FALSE,
      static_cast<DWORD>(automation::ToInteger(sample->Invoke({"ProcessId"}, CallKind::Get, {}))));
};

struct LateBoundContract : testing::TestWithParam<LateBoundPtr (*)()> {
  Value Call(const platform::Member& member, CallKind kind, const std::vector<Value>& arguments = {}) {
    return sample_->Invoke(member, kind, arguments);
  }

  RegisteredSample registered_;
  LateBoundPtr sample_ = GetParam()();
};

TEST_P(LateBoundContract, PassesArgumentsResultsAndErrors) {
  const Value object = std::make_shared<SampleItems>();
  const std::tuple<platform::Member, CallKind, std::vector<Value>, const char*> cases[]{
      {{"vALUE"}, CallKind::Get, {}, "text sample"},
      {{"", 1}, CallKind::GetOrMethod, {}, "text sample"},
      {{"Value"}, CallKind::Put, {"\xE2\x82\xAC"}, "empty"},
      {{"Value"}, CallKind::Get, {}, "text \xE2\x82\xAC"},
      {{"Echo"}, CallKind::Method, {Value()}, "empty"},
      {{"Echo"}, CallKind::Method, {true}, "boolean True"},
      {{"Echo"}, CallKind::GetOrMethod, {-7}, "integer -7"},
      {{"Echo"}, CallKind::Method, {0.1}, "number 0.1"},
      {{"Value"}, CallKind::PutReference, {object}, "empty"},
      {{"Value"}, CallKind::Get, {"beta"}, "text beta"},
      {{"Value"}, CallKind::PutReference, {LateBoundPtr()}, "empty"},
      {{"Value"}, CallKind::Get, {}, "nothing"},
      {{"Throw"}, CallKind::Method, {20005, "Not found"}, "error 20005 Sample: Not found"},
      {{"Throw"}, CallKind::Method, {platform::ObjectServerError(18200), "!"}, "error -2147203304 Sample: !"},
      {{"Items"}, CallKind::Get, {4}, "refused 11"},
      {{"Nonesuch"}, CallKind::Get, {}, "refused 6"},
      {{"", 99}, CallKind::Get, {}, "refused 3"},
      {{"Echo"}, CallKind::Method, {1, 2}, "refused 14"},
      {{"Throw"}, CallKind::Method, {LateBoundPtr()}, "refused 5"},
  };
  for (const auto& [member, kind, arguments, expected] : cases)
    EXPECT_EQ(Outcome(std::bind_front(&LateBoundContract::Call, this, member, kind, arguments)), expected)
        << member.name;
}

TEST_P(LateBoundContract, EventsArriveUntilTheSubscriptionEnds) {
  std::string heard;
  const auto listen = [&](std::int32_t event, platform::Arguments arguments) {
    heard += std::to_string(event);
    for (const Value& argument : arguments) heard += ", " + Describe(argument);
    // The busy object accepts a handler's calls.
    heard += " to " + Describe(Call({"Value"}, CallKind::Get)) + ";";
  };
  auto subscription = sample_->Advise(listen);
  const Value items = Call({"Items"}, CallKind::Get);
  EXPECT_EQ(Call({"Fire"}, CallKind::Method, {13, "value", items, 4}), Value(1));
  EXPECT_EQ(heard, "13, text value, object, integer 4 to text sample;");
  subscription.reset();
  EXPECT_EQ(Call({"Fire"}, CallKind::Method, {9}), Value(0));

  const auto silent = [&] { return std::get<LateBoundPtr>(items)->Advise(listen) ? 1 : 0; };
  EXPECT_EQ(Outcome(silent), "refused 1");
  subscription = sample_->Advise(listen);
  sample_.reset();
  EXPECT_NO_THROW(subscription.reset()) << "a subscription may outlive its object";
}

LateBoundPtr Directly() { return std::make_shared<Sample>(); }
LateBoundPtr ThroughItsAdapter() {
  return std::make_shared<DispatchObject>(
      DispatchAdapter::For(std::make_shared<Sample>(), {Sample::kEvents}));
}
LateBoundPtr InAnotherProcess() { return CreateObject("Qm5r.ComSample"); }

INSTANTIATE_TEST_SUITE_P(Ways, LateBoundContract,
                         testing::Values(Directly, ThroughItsAdapter, InAnotherProcess));

std::string MachineText(const std::string& key) {
  wchar_t text[300]{};
  LONG size = sizeof text;
  RegQueryValueW(HKEY_LOCAL_MACHINE, ToWide("Software\\Classes\\" + key).c_str(), text, &size);
  return ToUtf8(text);
}

TEST(Registration, WritesAndRemovesWhatClientsLookUp) {
  const std::string id = GuidText(Sample::kClass), server = "CLSID\\" + id + "\\LocalServer32",
                    marshaller = "Interface\\" + GuidText(Sample::kEvents) + "\\ProxyStubClsid32";
  ServerRegistration broken{Sample::kClass, "Qm5r.ComSample", "", "C:\\no such program.exe"};
  broken.has_type_library = true;
  ServerRegistration refused{Sample::kClass, std::string(300, 'x'), "", "C:\\another program.exe"};
  const auto expect_refusals = [&] {
    for (const ServerRegistration& each : {broken, refused})
      EXPECT_THROW(RegisterServer(each), platform::Error);
  };
  {
    const RegisteredSample registered;
    EXPECT_EQ(MachineText("Qm5r.ComSample\\CLSID"), id);
    EXPECT_EQ(MachineText(marshaller), "{00020420-0000-0000-C000-000000000046}");
    const std::string command = MachineText(server);
    EXPECT_PRED2(Both, command.starts_with('"'), command.ends_with("test_server.exe\" /automation"))
        << command;
    expect_refusals();
    EXPECT_EQ(MachineText(server) + MachineText("Qm5r.ComSample\\CLSID"), command + id) << "unchanged";
  }
  expect_refusals();
  for (const std::string& key : {std::string("Qm5r.ComSample"), server, marshaller})
    EXPECT_EQ(MachineText(key), "") << key;
}

TEST(Registration, DependsOnTheFirstWord) {
  using enum ServerStart;
  const std::pair<const char*, ServerStart> cases[]{
      {"  -REGSERVER /more", Register}, {"/unregserver", Unregister}, {"more /regserver", ByHand},
      {"/x -unregserver", ByHand},      {"/x -Embedding", ByCom},     {"regserver", ByHand}};
  for (const auto& [arguments, start] : cases) EXPECT_EQ(ServerStartOf(arguments), start) << arguments;
}

TEST_F(Server, ServesScripts) { EXPECT_EQ(RunProgram("cscript.exe", "windows_com_test_client.vbs"), 7); }

TEST_F(Server, LivesWhileAnyObjectIsHeld) {
  auto second = CreateObject("Qm5r.ComSample");
  auto items = std::get<LateBoundPtr>(second->Invoke({"Items"}, CallKind::Get, {}));
  sample.reset();
  second.reset();
  EXPECT_EQ(items->Invoke({"Count"}, CallKind::Get, {}), Value(3));
  items.reset();
  EXPECT_EQ(WaitForSingleObject(process, 20000), WAIT_OBJECT_0);
  EXPECT_EQ(RunProgram("windows_com_test_server.exe", "-Embedding /impatient"), 0);
}

TEST_F(Server, ClientsSurviveItsDeath) {
  auto subscription = sample->Advise([](auto, auto) {});
  for (int call = 0; call < 2; ++call)
    EXPECT_THROW(sample->Invoke({"Die"}, CallKind::Method, {}), platform::Error);
  EXPECT_EQ(WaitForSingleObject(process, 20000), WAIT_OBJECT_0);
  EXPECT_THROW(sample->Advise([](auto, auto) {}), platform::Error);
  EXPECT_NO_THROW(subscription.reset());
  EXPECT_TRUE(CreateObject("Qm5r.ComSample"));
}

TEST_F(Server, EndsAnObjectReleasedDuringItsCallOnItsThread) {
  ComPtr<IDispatch> second(ToDispatch(CreateObject("Qm5r.ComSample")));
  std::unique_ptr<platform::Subscription> events =
      SubscribeToDefaultEvents(second.get(), [&](auto, auto) { events.reset(), second.Reset(); });
  CallArguments call(std::vector<Value>{13});
  DISPPARAMS parameters = call.Parameters(false);
  second.get()->Invoke(5, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr);
  ASSERT_FALSE(second);
  const auto ended = [&] { return automation::ToInteger(sample->Invoke({"Ended"}, CallKind::Get, {})); };
  for (int i = 0; i < 100 && ended() == 0; ++i) Sleep(20);
  EXPECT_EQ(ended(), 1);
}

TEST(Apartment, EndsItsObjectsOnItsThread) {
  std::weak_ptr<Sample> handed_over, held;
  ComPtr<IDispatch> adapter;
  std::thread([&] {
    const Apartment apartment;
    auto first = std::make_shared<Sample>(), second = std::make_shared<Sample>();
    handed_over = first, held = second;
    ComPtr<IDispatch> last = ToDispatch(std::exchange(first, nullptr));
    adapter = ToDispatch(std::exchange(second, nullptr));
    std::thread([&] { last.Reset(); }).join();
  }).join();
  EXPECT_PRED2(Both, handed_over.expired(), held.expired());
  EXPECT_EQ(Sample::ended_elsewhere, 0);
}

/// A server that only its owner ends, and a client that has found its class.
struct OwnedServer : testing::Test {
  static ComPtr<IClassFactory> Class() {
    ComPtr<IClassFactory> offered;
    CoGetClassObject(Sample::kClass, CLSCTX_LOCAL_SERVER, nullptr, IID_IClassFactory, offered.ReceiveVoid());
    return offered;
  }
  HRESULT Create() { return found->CreateInstance(nullptr, IID_IUnknown, object.ReceiveVoid()); }
  bool GoesWithin(int milliseconds) {
    for (MSG message; milliseconds > 0; milliseconds -= 10, Sleep(10))
      for (; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); DispatchMessageW(&message))
        if (message.message == WM_QUIT) return true;
    return false;
  }
  LocalServer server{{.id = Sample::kClass, .make = [] { return std::make_shared<Sample>(); }},
                     {.leaves_when_unused = false,
                      .linger = std::chrono::milliseconds(100),
                      .grace = std::chrono::seconds(2)}};
  ComPtr<IClassFactory> found = Class();
  ComPtr<IUnknown> object;
};

TEST_F(OwnedServer, EndsIfNoNewClientComes) {
  Create();
  object.Reset();
  EXPECT_FALSE(GoesWithin(600)) << "its owner still runs it";
  server.Leave();
  Create();
  EXPECT_FALSE(GoesWithin(600)) << "a client came while it lingered";
  object.Reset();
  server.Leave();
  EXPECT_FALSE(GoesWithin(200));
  EXPECT_FALSE(Class()) << "the class is withdrawn";
  EXPECT_EQ(Create(), S_OK);
  EXPECT_TRUE(Class()) << "the class is offered again";
  object.Reset();
  found->LockServer(TRUE);
  server.Leave();
  EXPECT_FALSE(GoesWithin(600)) << "the class is locked";
  found->LockServer(FALSE);
  EXPECT_TRUE(GoesWithin(6000));
  EXPECT_EQ(Create(), CO_E_SERVER_STOPPING);
}

TEST_F(OwnedServer, EndsAtOnceIfObjectsAreHeld) {
  Create();
  server.Leave();
  EXPECT_TRUE(GoesWithin(50));
  EXPECT_FALSE(Class());
}

}  // namespace
}  // namespace windows::com
