#include "simulator/object.h"

#include <algorithm>

#include "simulator/errors.h"

namespace simulator {

std::int32_t WholeNumber(const Value& value, std::int32_t least, std::int32_t most) {
  const std::int32_t number = automation::ToInteger(value);
  if (number < least || number > most) Fail(Code::OutOfRange, std::to_string(number) + " is out of range.");
  return number;
}

std::size_t FindItem(const stored::Names& names, Arguments arguments) {
  if (const auto* name = std::get_if<std::string>(&arguments[0])) {
    const auto found = std::find(names.begin(), names.end(), *name);
    if (found == names.end()) Fail(Code::NotFound, "There is no object named \"" + *name + "\".");
    return static_cast<std::size_t>(found - names.begin());
  }
  const std::int32_t ordinal = automation::ToInteger(arguments[0]);
  if (ordinal < 1 || static_cast<std::size_t>(ordinal) > names.size())
    Fail(Code::NotFound, "There is no object number " + std::to_string(ordinal) + ".");
  return static_cast<std::size_t>(ordinal) - 1;
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
