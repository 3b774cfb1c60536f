#include "simulator/object.h"

#include <algorithm>

#include "simulator/errors.h"

namespace simulator {

std::int32_t WholeNumber(const Value& value, std::int32_t least, std::int32_t most) {
  const std::int32_t number = automation::ToInteger(value);
  if (number < least || number > most) Fail(Code::OutOfRange, std::to_string(number) + " is out of range.");
  return number;
}

std::size_t PlaceOf(const Value& ordinal) {
  return static_cast<std::size_t>(std::int64_t{automation::ToInteger(ordinal)} - 1);
}

void FailNoItem(const Value& key) {
  if (const auto* name = std::get_if<std::string>(&key))
    Fail(Code::NotFound, "There is no object named \"" + *name + "\".");
  Fail(Code::NotFound, "There is no object number " + std::to_string(automation::ToInteger(key)) + ".");
}

std::size_t FindItem(const stored::Names& names, Arguments arguments) {
  const auto* name = std::get_if<std::string>(&arguments[0]);
  const std::size_t place = name ? static_cast<std::size_t>(std::ranges::find(names, *name) - names.begin())
                                 : PlaceOf(arguments[0]);
  if (place >= names.size()) FailNoItem(arguments[0]);
  return place;
}

std::span<const MemberRow<Collection>> Collection::Members() {
  static const Row kRows[] = {
      ItemRow(),
      CountRow(),
      Property(2, "ClassId", [](Collection& self) { return static_cast<std::int32_t>(self.class_id_); }),
      ParentRow(3),
  };
  return kRows;
}

}  // namespace simulator
