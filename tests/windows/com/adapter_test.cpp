#include <gtest/gtest.h>

#include <cstring>

#include "sample.h"
#include "support/conditions.h"
#include "windows/com/adapter.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/failure.h"
#include "windows/com/home_thread.h"
#include "windows/com/variant_conversion.h"
#include "windows/com/wide_text.h"

namespace windows::com {
namespace {

using platform::Value;

TEST(WideText, KeepsAllCharactersAndReplacesInvalidOnes) {
  EXPECT_EQ(ToWide("\xF0\x9F\x8C\xA1 a\xFFz"), L"\xD83C\xDF21 a\xFFFDz");
}

template <class T>
VARIANT Of(VARTYPE type, T content) {
  VARIANT variant{};
  std::memcpy(&variant.llVal, &content, sizeof content);
  variant.vt = type;
  return variant;
}

TEST(VariantConversion, ReadsWhatClientsSend) {
  const Bstr text(std::wstring_view(L"\u00E4"));
  BSTR raw = text.get();
  VARIANT inner = Of(VT_I2, SHORT{-5});
  const LONGLONG small = -7, low = -(1LL << 40), high = 1LL << 53, currency = 125000;
  const std::pair<VARIANT, const char*> cases[]{
      {Of(VT_ERROR, DISP_E_PARAMNOTFOUND), "empty"},
      {Of(VT_ERROR, E_FAIL), "refused 5"},
      {Of(VT_BOOL, SHORT{1}), "boolean True"},
      {Of(VT_I1, '\xFF'), "integer -1"},
      {Of(VT_UI1, '\xFF'), "integer 255"},
      {Of(VT_UINT, 0xFFFFFFFFu), "number 4294967295"},
      {Of(VT_I8, small), "integer -7"},
      {Of(VT_I8, low), "number -1099511627776"},
      {Of(VT_UI8, high), "number 9007199254740992"},
      {Of(VT_CY, currency), "number 12.5"},
      {Of(VT_BSTR, BSTR{}), "text "},
      {Of(VT_BSTR | VT_BYREF, &raw), "text \xC3\xA4"},
      {Of(VT_VARIANT | VT_BYREF, &inner), "integer -5"},
      {Of(VT_UNKNOWN, nullptr), "nothing"},
      {Of(VT_ARRAY | VT_UI1, nullptr), "refused 5"},
  };
  for (const auto& [variant, expected] : cases)
    EXPECT_EQ(Outcome([&sent = variant] { return FromVariant(sent); }), expected) << variant.vt;
}

TEST(VariantConversion, SurvivesEveryType) {
  const auto adapter = ToDispatch(std::make_shared<Sample>());
  for (VARTYPE type = 0; type <= VT_CLSID + 8; ++type)
    for (const int form : {0, 0 + VT_BYREF, 0 + VT_ARRAY, VT_BYREF | VT_ARRAY}) {
      LONGLONG target[4]{};
      VARIANT sent = Of(static_cast<VARTYPE>(type | form), form & VT_BYREF ? target : nullptr);
      DISPPARAMS parameters{&sent, nullptr, 1, 0};
      Variant value;
      ExceptionInfo info;
      const HRESULT result =
          adapter->Invoke(2, IID_NULL, 0, DISPATCH_METHOD, &parameters, value.get(), info.get(), nullptr);
      EXPECT_PRED2(Implies, result != S_OK, result == DISP_E_TYPEMISMATCH) << (type | form) << ' ' << result;
      EXPECT_PRED2(Implies, result == S_OK, !(form & VT_ARRAY)) << type;
    }
}

TEST(VariantConversion, ObjectsKeepTheirIdentity) {
  const auto sample = std::make_shared<Sample>();
  {
    const auto adapter = ToDispatch(sample);
    EXPECT_EQ(ServerUse::count(), 1);
    EXPECT_EQ(ToDispatch(sample).get(), adapter.get()) << "one object, two adapters";
    EXPECT_EQ(FromVariant(*ToVariant(sample).get()), Value(sample));
    EXPECT_EQ(ToDispatch(std::make_shared<DispatchObject>(adapter)).get(), adapter.get());
  }
  EXPECT_EQ(sample.use_count(), 1) << "the last client's release ends the adapter";
  EXPECT_EQ(ServerUse::count(), 0);
  EXPECT_TRUE(ToDispatch(sample));
}

constexpr DISPID kValue = 1, kEcho = 2, kThrow = 4, kFire = 5;
constexpr WORD kMethod = DISPATCH_METHOD, kGet = DISPATCH_PROPERTYGET, kPut = DISPATCH_PROPERTYPUT;

TEST(Adapter, HandlesEveryFormOfCall) {
  const auto adapter = ToDispatch(std::make_shared<Sample>());
  const std::tuple<DISPID, WORD, std::vector<Value>, std::vector<DISPID>, HRESULT, const char*> cases[]{
      {kValue, kPut, {"one"}, {DISPID_PROPERTYPUT}, S_OK, "empty"},
      {kValue, kGet | kMethod, {}, {}, S_OK, "text one"},
      {kValue, kPut, {"unnamed"}, {}, S_OK, "empty"},
      {kValue, kPut | DISPATCH_PROPERTYPUTREF, {2}, {DISPID_PROPERTYPUT}, S_OK, "empty"},
      {kValue, kMethod, {}, {}, DISP_E_MEMBERNOTFOUND, "0 : "},
      {kEcho, kGet, {5}, {}, DISP_E_MEMBERNOTFOUND, "0 : "},
      {kEcho, kMethod, {5}, {DISPID_PROPERTYPUT}, DISP_E_NONAMEDARGS, "0 : "},
      {kValue, kPut, {5}, {0}, DISP_E_NONAMEDARGS, "0 : "},
      {DISPID_NEWENUM, kMethod, {}, {}, DISP_E_MEMBERNOTFOUND, "0 : "},
      {kValue, 0, {}, {}, E_INVALIDARG, "0 : "},
      {kThrow, kMethod, {20003, "Unsupported"}, {}, DISP_E_EXCEPTION, "-2146808285 Sample: Unsupported"},
      {kThrow, kMethod, {"standard"}, {}, DISP_E_EXCEPTION, "-2147467259 Automation: standard failure"},
      {kThrow, kMethod, {"other"}, {}, DISP_E_EXCEPTION, "-2147467259 Automation: Unknown failure."},
  };
  for (const auto& [number, flags, arguments, named, result, expected] : cases) {
    CallArguments call(arguments);
    DISPPARAMS parameters = call.Parameters(false);
    parameters.rgdispidNamedArgs = const_cast<DISPID*>(named.data());
    parameters.cNamedArgs = static_cast<UINT>(named.size());
    Variant value;
    ExceptionInfo info;
    EXPECT_EQ(adapter->Invoke(number, IID_NULL, 0, flags, &parameters, value.get(), info.get(), nullptr),
              result);
    const std::string found =
        std::to_string(info->scode) + " " + TextOf(info->bstrSource) + ": " + TextOf(info->bstrDescription);
    EXPECT_EQ(SUCCEEDED(result) ? Describe(FromVariant(*value.get())) : found, expected);
    EXPECT_EQ(adapter->Invoke(number, IID_NULL, 0, flags, &parameters, nullptr, nullptr, nullptr), result)
        << expected;
  }
  VARIANT reversed[3]{};
  reversed[1].vt = VT_ARRAY | VT_I2;
  DISPPARAMS unreadable{reversed, nullptr, 3, 0};
  UINT bad = 77;
  EXPECT_EQ(adapter->Invoke(kEcho, IID_NULL, 0, kMethod, &unreadable, nullptr, nullptr, &bad),
            DISP_E_TYPEMISMATCH);
  EXPECT_EQ(bad, 1u);
}

/// Another manufacturer's client: its sink has only IDispatch and returns a fixed result for every event.
struct Answering final : Adapter<IDispatch> {
  explicit Answering(HRESULT result) : Adapter(std::make_shared<SampleItems>()), answer(result) {}
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    ++calls;
    return answer;
  }
  HRESULT answer;
  int calls = 0;
};

TEST(DispatchObject, FallsBackToPlainPut) {
  const auto object = Make<Answering>(DISP_E_MEMBERNOTFOUND);
  DispatchObject client(object);
  EXPECT_THROW(client.Invoke({"", 1}, platform::CallKind::PutReference, {}), platform::Error);
  EXPECT_EQ(object->calls, 2);
}

struct Events : testing::Test {
  std::shared_ptr<Sample> sample = std::make_shared<Sample>();
  ComPtr<IDispatch> adapter = DispatchAdapter::For(sample, {.events = Sample::kEvents});
};

TEST_F(Events, DropASinkOnlyIfItsProcessHasEnded) {
  ComPtr<IEnumConnectionPoints> points;
  ComPtr<IConnectionPoint> point;
  adapter.As<IConnectionPointContainer>()->EnumConnectionPoints(points.Receive());
  EXPECT_EQ(points->Next(1, point.Receive(), nullptr), S_OK);
  EXPECT_EQ(points->Skip(1), S_FALSE);
  points.Reset();
  adapter.Reset();  // a point keeps its adapter
  for (const auto& [answer, calls] : {std::pair(S_OK, 2),
                                      {E_FAIL, 2},
                                      {RPC_E_DISCONNECTED, 1},
                                      {HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), 1}}) {
    const auto sink = Make<Answering>(answer);
    DWORD cookie = 0;
    ASSERT_EQ(point->Advise(sink.get(), &cookie), S_OK);
    EXPECT_EQ(sample->Fire(1), 1);
    EXPECT_EQ(sample->Fire(1), calls - 1) << std::hex << answer;
    EXPECT_EQ(sink->calls, calls);
    EXPECT_EQ(point->Unadvise(cookie), S_OK);
  }
  DWORD last = 0;
  ASSERT_EQ(point->Advise(Make<Answering>(S_OK).get(), &last), S_OK);
  point.Reset();
  EXPECT_EQ(sample->Fire(1), 0) << "the adapter has ended";
}

TEST_F(Events, ExcludePropertyNotifications) {
  DispatchObject source(
      DispatchAdapter::For(std::make_shared<Sample>(), {.events = IID_IPropertyNotifySink}));
  EXPECT_EQ(Outcome([&] { return source.Advise({}) ? 1 : 0; }), "refused 1");
}

TEST_F(Events, AllowHandlersToThrowAndToDisconnect) {
  DispatchObject client(adapter);
  int calls = 0;
  const auto throwing = client.Advise([&](auto, auto) { throw ++calls; });
  std::unique_ptr<platform::Subscription> leaving =
      client.Advise([&](auto, auto) { leaving.reset(), ++calls; });
  for (int times = 0; times < 2; ++times) EXPECT_NO_THROW(sample->Fire(1));
  EXPECT_EQ(calls, 3);
}

TEST_F(Events, AllowHandlersToReleaseTheRaisingObject) {
  const std::weak_ptr<Sample> object = sample;
  const auto releasing = std::exchange(sample, nullptr)->Advise([&](auto, auto) {
    adapter.Reset();
    EXPECT_FALSE(object.expired());
  });
  CallArguments call(std::vector<Value>{13});
  DISPPARAMS parameters = call.Parameters(false);
  EXPECT_EQ(adapter->Invoke(kFire, IID_NULL, 0, kMethod, &parameters, nullptr, nullptr, nullptr), S_OK);
  EXPECT_TRUE(object.expired());
}

}  // namespace
}  // namespace windows::com
