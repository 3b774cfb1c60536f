#include <gtest/gtest.h>

#include <cstring>

#include "sample.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/server_use.h"
#include "windows/com/variant_conversion.h"

namespace windows::com {
namespace {

using platform::Value;

TEST(WideText, HoldsAllCharactersAndReplacesWhatIsNone) {
  EXPECT_EQ(ToWide("\xF0\x9F\x8C\xA1 a\xFFz"), L"\xD83C\xDF21 a\xFFFDz");
}

template <class T>
VARIANT Plain(VARTYPE type, T content) {
  VARIANT variant{};
  std::memcpy(&variant.llVal, &content, sizeof content);
  variant.vt = type;
  return variant;
}

TEST(VariantConversion, ReadsWhatClientsSend) {
  const Bstr text(std::wstring_view(L"\u00E4"));
  BSTR raw = text.get();
  VARIANT inner = Plain(VT_I2, SHORT{-5});
  struct Case {
    VARIANT variant;
    const char* expected;
  } const cases[]{
      {Plain(VT_NULL, 0), "empty"},
      {Plain(VT_ERROR, DISP_E_PARAMNOTFOUND), "empty"},
      {Plain(VT_ERROR, E_FAIL), "refused 5"},
      {Plain(VT_BOOL, SHORT{1}), "boolean True"},
      {Plain(VT_I1, '\xFF'), "integer -1"},
      {Plain(VT_UI1, '\xFF'), "integer 255"},
      {Plain(VT_INT, -3), "integer -3"},
      {Plain(VT_UINT, 0xFFFFFFFFu), "number 4294967295"},
      {Plain(VT_I8, LONGLONG{-7}), "integer -7"},
      {Plain(VT_I8, -(LONGLONG{1} << 40)), "number -1099511627776"},
      {Plain(VT_UI8, ULONGLONG{1} << 53), "number 9007199254740992"},
      {Plain(VT_CY, LONGLONG{125000}), "number 12.5"},
      {Plain(VT_DATE, 2.25), "number 2.25"},
      {Plain(VT_BSTR, BSTR{}), "text "},
      {Plain(VT_BSTR | VT_BYREF, &raw), "text \xC3\xA4"},
      {Plain(VT_VARIANT | VT_BYREF, &inner), "integer -5"},
      {Plain(VT_UNKNOWN, nullptr), "nothing"},
      {Plain(VT_ARRAY | VT_UI1, nullptr), "refused 5"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Outcome([&] { return FromVariant(c.variant); }), c.expected) << c.variant.vt;
}

TEST(VariantConversion, ObjectsKeepTheirIdentity) {
  const auto sample = std::make_shared<Sample>();
  {
    const auto door = ToDispatch(sample);
    EXPECT_EQ(ServerUse::count(), 1);
    EXPECT_EQ(ToDispatch(sample).get(), door.get()) << "one object, two doors";
    EXPECT_EQ(FromVariant(*ToVariant(sample).get()), Value(sample));
    EXPECT_EQ(ToDispatch(std::make_shared<DispatchObject>(door)).get(), door.get());
  }
  EXPECT_EQ(sample.use_count(), 1) << "the door outlived its last client";
  EXPECT_EQ(ServerUse::count(), 0);
  EXPECT_TRUE(ToDispatch(sample));
}

}  // namespace
}  // namespace windows::com
