// An object server reports any text as a value, which is shown and edited: an edit changes only its own
// field, and the written text has the fields that were read.

#include <algorithm>
#include <memory>

#include "fuzz.h"
#include "model/control_binding.h"
#include "platform/error.h"
#include "text/numbers.h"

namespace {

/// A network variable that reports one text and keeps what is written.
struct Variable : platform::LateBound {
  std::string value;
  platform::Value Invoke(const platform::Member&, platform::CallKind kind,
                         platform::Arguments arguments) override {
    if (kind == platform::CallKind::Get || kind == platform::CallKind::GetOrMethod) return value;
    if (const auto* text = std::get_if<std::string>(&arguments.back())) written = *text;
    return {};
  }
  std::string written;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider given(data, size);
  given.ConsumeIntegral<std::uint8_t>();  // the corpus has one byte more
  model::CNvCpTable point;
  point.Separator = given.PickValueInArray({" ", ",", "\t"});
  point.MostFields = given.PickValueInArray<std::size_t>({0, 6});
  point.Format = "F";
  model::CNvCtrlTable binding;
  binding.NvCpTable = &point;
  binding.ItemArrayIndex = given.ConsumeIntegralInRange<std::int16_t>(0, 8);
  binding.RoundValue = given.ConsumeBool();
  binding.Ceiling = given.PickValueInArray({0.5, 1.0});
  const std::string entered = given.ConsumeRandomLengthString();
  const auto variable = std::make_shared<Variable>();
  variable->value = given.ConsumeRemainingBytesAsString();
  point.MyNetworkVariable = lns::NetworkVariable(variable);
  try {
    point.GetNetworkValue(0);
  } catch (const platform::Error&) {
    EXPECT_THAT(point.NvAsArray.empty());
    return 0;
  }
  const auto read = point.NvAsArray;
  EXPECT_THAT(point.MostFields == 0 || read.size() <= point.MostFields);
  try {
    binding.Value();
    binding.SetValue(entered);
  } catch (const platform::Error&) {
    EXPECT_THAT(point.NvAsArray == read && !point.ValueAsChanges);
    return 0;
  }
  // The editing rules let through only numbers and list items: these are never empty and contain no
  // separators, and commas separate only numbers.
  const auto is_number = [](const std::string& text) { return text::IsNumeric(text); };
  const bool number = is_number(entered);
  if (entered.empty() || (!number && entered.find_first_of(" ,;") != std::string::npos)) return 0;
  if (point.Separator == "," && !(number && std::ranges::all_of(read, is_number))) return 0;
  try {
    point.SendNetworkValue();
  } catch (const platform::Error&) {
    EXPECT_THAT(point.ValueAsChanges);
    return 0;
  }
  variable->value = variable->written;
  point.GetNetworkValue(0);
  auto expected = read;
  const auto index = static_cast<std::size_t>(binding.ItemArrayIndex);
  expected.at(index) = point.NvAsArray.at(index);
  EXPECT_THAT(point.NvAsArray == expected);
  EXPECT_THAT(expected[index] == entered || text::ParseNumber(expected[index]) == text::ParseNumber(entered));
  binding.DropChange();
  return 0;
}
