#include "sample.h"

#include <array>
#include <stdexcept>

#include "automation/convert.h"

using automation::ToInteger;
using automation::ToText;
using platform::Arguments;
using platform::Value;

namespace {

Value Throw(Sample&, Arguments what) {
  if (ToText(what[0]) == "standard") throw std::runtime_error("standard failure");
  if (ToText(what[0]) == "other") throw 7;
  throw platform::Error(ToInteger(what[0]), "Sample", ToText(what[1]));
}

Value FindItem(SampleItems& self, Arguments arguments) {
  for (std::size_t i = 0; i < self.items.size(); ++i)
    if (ToText(arguments[0]) == self.items[i] || arguments[0] == Value(static_cast<std::int32_t>(i + 1)))
      return self.items[i];
  throw platform::Error(platform::kBadIndex, "Sample", "No such item.");
}

}  // namespace

std::span<const automation::MemberRow<Sample>> Sample::Members() {
  static const Row rows[]{
      Property(
          1, "Value", [](Sample& self) { return self.value_; },
          [](Sample& self, const Value& value) { self.value_ = value; }),
      Function(
          2, "Echo", [](Sample&, Arguments arguments) { return arguments[0]; }, 1),
      Property(3, "Items", [](Sample&) { return std::make_shared<SampleItems>(); }),
      Function(4, "Throw", Of<Throw>, 1, 2),
      Function(
          5, "Fire",
          [](Sample& self, Arguments arguments) {
            return self.Fire(ToInteger(arguments[0]), arguments.subspan(1));
          },
          1, 4),
      Property(6, "ProcessId", [](Sample&) { return static_cast<std::int32_t>(GetCurrentProcessId()); }),
      Function(7, "Die", [](Sample&) { ExitProcess(0); }),
      Property(8, "Ended", [](Sample&) { return ended_at_home - 100 * ended_elsewhere; }),
  };
  return rows;
}

std::unique_ptr<platform::Subscription> Sample::Advise(platform::EventHandler handler) {
  struct Listening : platform::Subscription {
    std::shared_ptr<platform::EventHandler> heard;
  };
  auto listening = std::make_unique<Listening>();
  listening->heard = std::make_shared<platform::EventHandler>(std::move(handler));
  handlers_.push_back(listening->heard);
  return listening;
}

std::int32_t Sample::Fire(std::int32_t event, Arguments arguments) {
  std::int32_t heard = 0;
  for (const auto& listening : std::vector(handlers_))
    if (const auto handler = listening.lock()) (*handler)(event, arguments), ++heard;
  return heard;
}

std::span<const automation::MemberRow<SampleItems>> SampleItems::Members() {
  static const Row rows[]{
      Indexed(platform::kDefaultMember, "Item", Of<FindItem>),
      Property(2, "Count", [](SampleItems& self) { return static_cast<std::int32_t>(self.items.size()); }),
  };
  return rows;
}

std::string Describe(const Value& value) {
  static constexpr std::array kKinds{"empty", "boolean ", "integer ", "number ", "text "};
  if (const auto* object = std::get_if<platform::LateBoundPtr>(&value)) return *object ? "object" : "nothing";
  return kKinds[value.index()] + ToText(value);
}

std::string Outcome(const std::function<Value()>& work) try {
  return Describe(work());
} catch (const platform::Error& error) {
  const std::int32_t refusal = error.number() - platform::kUnknownInterface + 1;
  if (refusal > 0 && refusal < 20) return "refused " + std::to_string(refusal);
  return "error " + std::to_string(error.number()) + " " + error.source() + ": " + error.description();
}
