#include "simulator/json_reader.h"

#include "simulator/errors.h"

namespace simulator {
namespace {

constexpr const char* kText = "expected a text";
constexpr const char* kWhole = "expected a whole number";
constexpr const char* kBoolean = "expected true or false";
constexpr const char* kList = "expected a list";
constexpr const char* kObject = "expected an object";

}  // namespace

JsonReader::JsonReader(const JsonNode& node, std::string path, std::string file)
    : node_(node), path_(std::move(path)), file_(std::move(file)) {
  if (node.kind != JsonNode::Kind::Object) RefuseAt(node.line, path_, kObject);
}

std::string JsonReader::Text(std::string_view key) {
  Require(key);
  return FindKind(key, JsonNode::Kind::Text, kText)->text;
}

std::string JsonReader::Text(std::string_view key, const std::string& otherwise) {
  const JsonNode* node = FindKind(key, JsonNode::Kind::Text, kText);
  return node ? node->text : otherwise;
}

int JsonReader::Integer(std::string_view key, int least, int most) {
  Require(key);
  return Integer(key, least, least, most);
}

int JsonReader::Integer(std::string_view key, int otherwise, int least, int most) {
  const JsonNode* node = FindKind(key, JsonNode::Kind::Integer, kWhole);
  if (!node) return otherwise;
  if (node->integer < least || node->integer > most)
    Refuse(key, "expected a whole number from " + std::to_string(least) + " to " + std::to_string(most));
  return static_cast<int>(node->integer);
}

bool JsonReader::Boolean(std::string_view key, bool otherwise) {
  const JsonNode* node = FindKind(key, JsonNode::Kind::Boolean, kBoolean);
  return node ? node->boolean : otherwise;
}

std::vector<std::string> JsonReader::Texts(std::string_view key) {
  std::vector<std::string> texts;
  const JsonNode* list = FindKind(key, JsonNode::Kind::List, kList);
  if (!list) return texts;
  for (const JsonNode& item : list->items) {
    const std::string path = PathTo(key) + "[" + std::to_string(texts.size()) + "]";
    if (item.kind != JsonNode::Kind::Text) RefuseAt(item.line, path, kText);
    for (const std::string& earlier : texts)
      if (earlier == item.text) RefuseAt(item.line, path, "\"" + item.text + "\" is listed twice");
    texts.push_back(item.text);
  }
  return texts;
}

void JsonReader::Object(std::string_view key, const std::function<void(JsonReader&)>& read) {
  JsonReader reader(Require(key), PathTo(key), file_);
  read(reader);
  reader.Finish();
}

void JsonReader::Each(std::string_view key, const std::function<void(JsonReader&)>& read) {
  const JsonNode* list = FindKind(key, JsonNode::Kind::List, kList);
  if (!list) return;
  for (std::size_t i = 0; i < list->items.size(); ++i) {
    JsonReader reader(list->items[i], PathTo(key) + "[" + std::to_string(i) + "]", file_);
    read(reader);
    reader.Finish();
  }
}

void JsonReader::EachText(std::string_view key,
                          const std::function<void(const std::string& name, const std::string& text)>& read) {
  const JsonNode* object = FindKind(key, JsonNode::Kind::Object, kObject);
  if (!object) return;
  for (const JsonMember& member : object->members) {
    const std::string path = PathTo(key) + "." + member.key;
    if (member.value.kind != JsonNode::Kind::Text) RefuseAt(member.line, path, kText);
    try {
      read(member.key, member.value.text);
    } catch (const FileError& reason) {
      RefuseAt(member.line, path, reason.what());
    }
  }
}

void JsonReader::Finish() const {
  for (const JsonMember& member : node_.members)
    if (!asked_.contains(member.key)) RefuseAt(member.line, PathTo(member.key), "unknown key");
}

void JsonReader::Refuse(std::string_view key, const std::string& reason) const {
  for (const JsonMember& member : node_.members)
    if (member.key == key) RefuseAt(member.value.line, PathTo(key), reason);
  RefuseAt(node_.line, PathTo(key), reason);
}

const JsonNode* JsonReader::Find(std::string_view key) {
  asked_.emplace(key);
  for (const JsonMember& member : node_.members)
    if (member.key == key) return &member.value;
  return nullptr;
}

const JsonNode& JsonReader::Require(std::string_view key) {
  const JsonNode* node = Find(key);
  if (!node) Refuse(key, "is required");
  return *node;
}

const JsonNode* JsonReader::FindKind(std::string_view key, JsonNode::Kind kind, const char* wanted) {
  const JsonNode* node = Find(key);
  if (node && node->kind != kind) Refuse(key, wanted);
  return node;
}

std::string JsonReader::PathTo(std::string_view key) const {
  return path_.empty() ? std::string(key) : path_ + "." + std::string(key);
}

void JsonReader::RefuseAt(int line, const std::string& path, const std::string& reason) const {
  throw FileError(file_ + ":" + std::to_string(line) + ": " + (path.empty() ? "" : path + ": ") + reason);
}

}  // namespace simulator
