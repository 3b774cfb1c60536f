// A director calls any member in any way with any values: it gets a result or a platform error, and the
// plug-in answers the next call.

#include "fuzz.h"
#include "headless/plug_in.h"
#include "small_network.h"

namespace {

platform::Value AnyValue(FuzzedDataProvider& given, const platform::LateBoundPtr& object) {
  switch (given.ConsumeIntegralInRange(0, 6)) {
    case 0:
      return {};
    case 1:
      return given.ConsumeBool();
    case 2:
      return given.ConsumeIntegral<std::int32_t>();
    case 3:
      return given.ConsumeFloatingPoint<double>();
    case 4:
      return given.PickValueInArray<const char*>({"N", kSmallDevice, "LcaSystem:N", "50", "-1"});
    case 5:
      return given.ConsumeBool() ? object : platform::LateBoundPtr();
    default:
      return given.ConsumeRandomLengthString(40);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider given(data, size);
  headless::PlugIn plug_in(MakeSmallNetwork(), {1, 0, 0});
  platform::LateBoundPtr api = plug_in.CreateApi();
  for (int call = 0; call < 16 && given.remaining_bytes() > 0; ++call) {
    const platform::Member member{"", given.ConsumeIntegralInRange(-2, 24)};
    const auto kind = given.PickValueInArray({platform::CallKind::Get, platform::CallKind::Put,
                                              platform::CallKind::PutReference, platform::CallKind::Method,
                                              platform::CallKind::GetOrMethod});
    std::vector<platform::Value> values(given.ConsumeIntegralInRange<std::size_t>(0, 4));
    for (auto& value : values) value = AnyValue(given, api);
    try {
      api->Invoke(member, kind, values);
    } catch (const platform::Error& error) {
      EXPECT_THAT(error.number() != 0 && !error.source().empty());
    }
  }
  const auto version = api->Invoke({"Version"}, platform::CallKind::Get, {});
  EXPECT_THAT(std::get<std::string>(version) == "1.0.0");
  return 0;
}
