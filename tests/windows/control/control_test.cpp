#include <gtest/gtest.h>
#include <windows.h>

#include <olectl.h>
#include <process.h>

#include "automation/convert.h"
#include "registry/registry.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/variant_conversion.h"
#include "windows/system/registry.h"

namespace {

using platform::CallKind;
using platform::LateBoundPtr;
using platform::Value;

/// A client of the control in control.cpp, which stays registered meanwhile.
struct InProcessControl : testing::Test {
  static constexpr const char* kSettings = "SOFTWARE\\Qm5r.TestControl";
  static void Register(const char* how) {
    _spawnlp(_P_WAIT, "regsvr32.exe", "regsvr32.exe", how, "/s", "TestControl.dll", nullptr);
  }
  static void SetUpTestSuite() { Register("/s"); }
  static void TearDownTestSuite() { Register("/u"); }

  void Create(const char* demands) {
    settings.SetMachineSetting(kSettings, "Demands", demands);
    settings.SetMachineSetting(kSettings, "Ended", "");
    control = windows::com::CreateObject("Qm5r.TestControl");
  }
  Value Call(const char* member, CallKind kind = CallKind::Get, const std::vector<Value>& arguments = {}) {
    return control->Invoke({member}, kind, arguments);
  }
  void Raise(const std::vector<Value>& event) {
    automation::ToObject(Call("Simulator"))->Invoke({"RaiseEvent"}, CallKind::Method, event);
  }
  std::string Heard() {
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) DispatchMessageW(&message);
    return std::exchange(heard, "");
  }

  windows::WindowsRegistry machine;
  registry::CRegistry settings{machine, "test"};
  LateBoundPtr control;
  std::string heard;
};

TEST_F(InProcessControl, WorksWithEveryDemand) {
  for (const char* demands :
       {"", "licence", "init", "init site", "init site first", "basic", "licence init site first basic"}) {
    SCOPED_TRACE(demands);
    Create(demands);
    EXPECT_NO_THROW(Call("Flags", CallKind::Put, {16}));
    EXPECT_NO_THROW(Call("Open", CallKind::Method));
    EXPECT_NO_THROW(EXPECT_EQ(Call("IsOpen"), Value(true)));
    control.reset();
    EXPECT_EQ(settings.MachineSetting(kSettings, "Ended"), "closed unsited gone");
  }
  try {
    Create("licence, no key");
    FAIL() << "created without a licence";
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.number(), CLASS_E_NOTLICENSED);
  }
}

TEST_F(InProcessControl, DeliversEventsOfItsThreadsInOrder) {
  Create("thread");
  auto subscription = control->Advise([this](std::int32_t event, platform::Arguments arguments) {
    heard += std::to_string(event);
    for (const Value& argument : arguments) {
      const auto* object = std::get_if<LateBoundPtr>(&argument);
      const bool elsewhere = object && windows::com::ToDispatch(*object).As<IMultiQI>();
      heard += (elsewhere ? " elsewhere " : " ") +
               automation::ToText(object ? (*object)->Invoke({"Name"}, CallKind::Get, {}) : argument);
    }
    heard += "; ";
  });
  Raise({13, 7, "text"});
  Raise({9});
  EXPECT_EQ(heard, "") << "during a call";
  Raise({20, 8});  // on this thread
  EXPECT_EQ(heard, "13 7 text elsewhere LcaObjectServer; 9; 20 8; ");
  Raise({9});
  EXPECT_EQ(Heard(), "13 7 text elsewhere LcaObjectServer; 9; 20 8; 9; ");
  Raise({13, 1, "late"});
  subscription.reset();
  EXPECT_EQ(Heard(), "") << "after the subscription's end";
}

}  // namespace
