#pragma once

#include <cstdint>
#include <string>

#include "platform/late_bound.h"

/// The conversions that automation makes between the types of its values. Each throws an Error with
/// kTypeMismatch if the value cannot be converted, and with kOverflow if the number does not fit.
namespace automation {

/// Numbers become their shortest decimal text, Booleans "True" and "False", the empty value "".
std::string ToText(const platform::Value& value);

/// Booleans are -1 and 0; fractions round half to even; texts must be numeric.
std::int32_t ToInteger(const platform::Value& value);

double ToDouble(const platform::Value& value);

/// Any number but 0 is true; a text must be "True" or "False" (in any letter case) or numeric.
bool ToBoolean(const platform::Value& value);

/// The object, or null for "Nothing" and for the empty value.
platform::LateBoundPtr ToObject(const platform::Value& value);

}  // namespace automation
