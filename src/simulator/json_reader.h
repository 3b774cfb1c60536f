#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

struct JsonMember;

/// A JSON value with its line.
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

/// Throws a FileError "file:line:column: ..." if the text is not JSON, or "file:line: ..." for a duplicate
/// key.
JsonNode ParseJson(std::string_view text, const std::string& file);

/// Reads the members of one JSON object by key. Throws a FileError "file:line: path.key: reason" for a wrong
/// value, and in `Finish` for a key that was not read.
class JsonReader {
 public:
  JsonReader(const JsonNode& node, std::string path, std::string file);

  bool Has(std::string_view key) { return Find(key) != nullptr; }

  /// Keys without a default are required.
  std::string Text(std::string_view key);
  std::string Text(std::string_view key, const std::string& otherwise);
  int Integer(std::string_view key, int least, int most);
  int Integer(std::string_view key, int otherwise, int least, int most);
  bool Boolean(std::string_view key, bool otherwise);
  std::vector<std::string> Texts(std::string_view key);

  /// The object under a required key; each object of an optional list; each text of an optional object.
  void Object(std::string_view key, const std::function<void(JsonReader&)>& read);
  void Each(std::string_view key, const std::function<void(JsonReader&)>& read);
  void EachText(std::string_view key,
                const std::function<void(const std::string& name, const std::string& text)>& read);

  /// Throws the error for a member of this object, or for the object if it has no such key.
  [[noreturn]] void Refuse(std::string_view key, const std::string& reason) const;

  void Finish() const;

 private:
  const JsonNode* Find(std::string_view key);
  const JsonNode& Require(std::string_view key);
  const JsonNode* FindKind(std::string_view key, JsonNode::Kind kind, const char* wanted);
  std::string PathTo(std::string_view key) const;
  [[noreturn]] void RefuseAt(int line, const std::string& path, const std::string& reason) const;

  const JsonNode& node_;
  std::string path_;
  std::string file_;
  std::set<std::string, std::less<>> asked_;
};

}  // namespace simulator
