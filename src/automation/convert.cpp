#include "automation/convert.h"

#include <limits>

#include "text/numbers.h"
#include "text/strings.h"

namespace automation {
namespace {

template <class... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

[[noreturn]] void ThrowMismatch() {
  throw platform::Error(platform::kTypeMismatch, "Automation", "Type mismatch.");
}

}  // namespace

std::string ToText(const platform::Value& value) {
  return std::visit(
      Overloaded{[](std::monostate) { return std::string(); },
                 [](bool b) { return std::string(b ? "True" : "False"); },
                 [](std::int32_t n) { return std::to_string(n); },
                 [](double d) { return text::ShortestText(d); }, [](const std::string& s) { return s; },
                 [](const platform::LateBoundPtr&) -> std::string { ThrowMismatch(); }},
      value);
}

double ToDouble(const platform::Value& value) {
  return std::visit(
      Overloaded{[](std::monostate) { return 0.0; }, [](bool b) { return b ? -1.0 : 0.0; },
                 [](std::int32_t n) { return static_cast<double>(n); }, [](double d) { return d; },
                 [](const std::string& s) {
                   const auto number = text::ParseNumber(s);
                   if (!number) ThrowMismatch();
                   return *number;
                 },
                 [](const platform::LateBoundPtr&) -> double { ThrowMismatch(); }},
      value);
}

std::int32_t ToInteger(const platform::Value& value) {
  const double number = text::RoundHalfEven(ToDouble(value));
  const bool fits = number >= std::numeric_limits<std::int32_t>::min() &&
                    number <= std::numeric_limits<std::int32_t>::max();
  if (!fits) throw platform::Error(platform::kOverflow, "Automation", "Overflow.");
  return static_cast<std::int32_t>(number);
}

bool ToBoolean(const platform::Value& value) {
  if (const auto* word = std::get_if<std::string>(&value)) {
    if (text::EqualIgnoringCase(*word, "True")) return true;
    if (text::EqualIgnoringCase(*word, "False")) return false;
  }
  return ToDouble(value) != 0;
}

platform::LateBoundPtr ToObject(const platform::Value& value) {
  if (std::holds_alternative<std::monostate>(value)) return nullptr;
  if (const auto* object = std::get_if<platform::LateBoundPtr>(&value)) return *object;
  ThrowMismatch();
}

}  // namespace automation
