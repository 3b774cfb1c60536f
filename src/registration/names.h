#pragma once

#include <cstdint>
#include <string>

namespace registration {

/// What a class of the object model is called in messages; "Custom ID = " and the code for one without a
/// name.
std::string ObjectTypeName(std::int16_t object_type);

/// What a command is called in messages; "Custom command " and the code for one without a name.
std::string CommandName(std::int32_t command_id);

}  // namespace registration
