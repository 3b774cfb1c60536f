#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

struct JsonMember;

/// A JSON value that remembers the line it stands on.
struct JsonNode {
  enum class Kind { Null, Boolean, Integer, Fraction, Text, List, Object };
  Kind kind = Kind::Null;
  int line = 1;
  bool boolean = false;
  std::int64_t integer = 0;
  std::string text;
  std::vector<JsonNode> items;
  std::vector<JsonMember> members;
};

struct JsonMember {
  std::string key;
  int line = 1;
  JsonNode value;
};

/// Raises a FileError "file:line:column: ..." for text that is not JSON, "file:line: ..." for a key given
/// twice.
JsonNode ParseJson(std::string_view text, const std::string& file);

}  // namespace simulator
