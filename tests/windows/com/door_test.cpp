#include <gtest/gtest.h>

#include "sample.h"
#include "windows/com/dispatch_door.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/failure.h"
#include "windows/com/variant_conversion.h"

namespace windows::com {
namespace {

using platform::Value;

constexpr DISPID kValue = 1, kEcho = 2, kThrow = 4;
constexpr WORD kGet = DISPATCH_PROPERTYGET, kPut = DISPATCH_PROPERTYPUT, kMethod = DISPATCH_METHOD,
               kEither = 12;

/// Raw calls, with what the caller finds in its result or in its EXCEPINFO.
TEST(Door, TakesEveryFormOfCall) {
  const auto door = ToDispatch(std::make_shared<Sample>());
  struct Case {
    DISPID number;
    WORD flags;
    std::vector<Value> arguments;
    std::vector<DISPID> named;
    HRESULT result;
    const char* found;
  } const cases[]{
      {kValue, kPut, {"one"}, {DISPID_PROPERTYPUT}, S_OK, "empty"},
      {kValue, kGet | kMethod, {}, {}, S_OK, "text one"},
      {kValue, kPut, {"unnamed"}, {}, S_OK, "empty"},
      {kValue, kEither, {2}, {DISPID_PROPERTYPUT}, S_OK, "empty"},
      {kValue, kGet, {}, {}, S_OK, "integer 2"},
      {kValue, kMethod, {}, {}, DISP_E_MEMBERNOTFOUND, "0 : "},
      {kEcho, kGet, {5}, {}, DISP_E_MEMBERNOTFOUND, "0 : "},
      {kEcho, kMethod, {5}, {DISPID_PROPERTYPUT}, DISP_E_NONAMEDARGS, "0 : "},
      {kValue, kPut, {5}, {0}, DISP_E_NONAMEDARGS, "0 : "},
      {DISPID_UNKNOWN, kMethod, {}, {}, DISP_E_MEMBERNOTFOUND, "0 : "},
      {DISPID_NEWENUM, kMethod, {}, {}, DISP_E_MEMBERNOTFOUND, "0 : "},
      {kValue, 0, {}, {}, E_INVALIDARG, "0 : "},
      {kThrow, kMethod, {20003, "Unsupported"}, {}, DISP_E_EXCEPTION, "20003 Sample: Unsupported"},
      {kThrow, kMethod, {platform::kBadIndex, "x"}, {}, DISP_E_BADINDEX, "0 : "},
      {kThrow, kMethod, {"standard"}, {}, DISP_E_EXCEPTION, "-2147467259 Automation: standard failure"},
      {kThrow, kMethod, {"other"}, {}, DISP_E_EXCEPTION, "-2147467259 Automation: Unknown failure."},
  };
  for (const Case& c : cases) {
    CallArguments call(c.arguments);
    DISPPARAMS parameters = call.Parameters(false);
    parameters.rgdispidNamedArgs = const_cast<DISPID*>(c.named.data());
    parameters.cNamedArgs = static_cast<UINT>(c.named.size());
    Variant value;
    ExceptionInfo info;
    EXPECT_EQ(door->Invoke(c.number, IID_NULL, 0, c.flags, &parameters, value.get(), info.get(), nullptr),
              c.result);
    const std::string found =
        std::to_string(info->scode) + " " + TextOf(info->bstrSource) + ": " + TextOf(info->bstrDescription);
    EXPECT_EQ(SUCCEEDED(c.result) ? Describe(FromVariant(*value.get())) : found, c.found);
    EXPECT_EQ(door->Invoke(c.number, IID_NULL, 0, c.flags, &parameters, nullptr, nullptr, nullptr), c.result)
        << c.found;
  }
}

TEST(Door, TellsWhichArgumentHasNoReading) {
  VARIANT reversed[3]{};
  reversed[1].vt = VT_ARRAY | VT_I2;
  DISPPARAMS parameters{reversed, nullptr, 3, 0};
  UINT bad = 77;
  const auto door = ToDispatch(std::make_shared<Sample>());
  const HRESULT result = door->Invoke(kEcho, IID_NULL, 0, kMethod, &parameters, nullptr, nullptr, &bad);
  EXPECT_EQ(result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(bad, 1u);
}

/// A client of another make: its sink knows IDispatch only and answers every event with a result of its own.
struct Answering final : Door<IDispatch> {
  explicit Answering(HRESULT result) : Door(std::make_shared<SampleItems>()), answer(result) {}
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    ++calls;
    return answer;
  }
  HRESULT answer;
  int calls = 0;
};

TEST(DispatchObject, PutsWhatCannotBePutByReference) {
  const auto object = Make<Answering>(DISP_E_MEMBERNOTFOUND);
  const auto put = [&] {
    return DispatchObject(object).Invoke({"", 1}, platform::CallKind::PutReference, {});
  };
  EXPECT_EQ(Outcome(put), "refused 3");
  EXPECT_EQ(object->calls, 2);
}

struct Connected {
  Connected() {
    ComPtr<IEnumConnectionPoints> points;
    door.As<IConnectionPointContainer>()->EnumConnectionPoints(points.Receive());
    EXPECT_EQ(points->Next(1, point.Receive(), nullptr), S_OK);
    EXPECT_EQ(points->Skip(1), S_FALSE);
  }
  std::shared_ptr<Sample> sample = std::make_shared<Sample>();
  ComPtr<IDispatch> door = DispatchDoor::For(sample, {.events = Sample::kEvents});
  ComPtr<IConnectionPoint> point;
};

TEST(Events, ASinkIsDroppedOnlyWhenItsProcessHasGone) {
  for (const auto& [answer, calls] : {std::pair(S_OK, 2),
                                      {E_FAIL, 2},
                                      {RPC_E_DISCONNECTED, 1},
                                      {HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), 1}}) {
    Connected c;
    const auto sink = Make<Answering>(answer);
    DWORD cookie = 0;
    ASSERT_EQ(c.point->Advise(sink.get(), &cookie), S_OK);
    c.door.Reset();
    EXPECT_EQ(c.sample->Fire(1), 1) << "a point keeps its door";
    EXPECT_EQ(c.sample->Fire(1), calls - 1) << std::hex << answer;
    EXPECT_EQ(sink->calls, calls);
    c.point.Reset();
    EXPECT_EQ(c.sample->Fire(1), 0);
  }
}

TEST(Events, AHandlerMayDoAnything) {
  Connected c;
  DispatchObject client(c.door);
  int calls = 0;
  const auto throwing = client.Advise([&](auto, auto) { throw ++calls; });
  std::unique_ptr<platform::Subscription> leaving =
      client.Advise([&](auto, auto) { leaving.reset(), ++calls; });
  EXPECT_NO_THROW(c.sample->Fire(1));
  EXPECT_NO_THROW(c.sample->Fire(1));
  EXPECT_EQ(calls, 3);
}

}  // namespace
}  // namespace windows::com
