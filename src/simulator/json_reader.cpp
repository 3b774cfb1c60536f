#include "simulator/json_reader.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>

#include "simulator/errors.h"

namespace simulator {
namespace {

constexpr std::size_t kDeepest = 64;

/// Passes the text to the parser and counts lines. Does not count the last character passed: after a number
/// the parser has already taken the character that ends it.
class CountingIterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  CountingIterator(const char* at, int* line) : at_(at), line_(line) {}
  reference operator*() const { return *at_; }
  CountingIterator& operator++() {
    if (after_newline_) ++*line_;
    after_newline_ = *at_ == '\n';
    ++at_;
    return *this;
  }
  CountingIterator operator++(int) {
    CountingIterator before = *this;
    ++*this;
    return before;
  }
  bool operator==(const CountingIterator& other) const { return at_ == other.at_; }

 private:
  const char* at_;
  int* line_;
  bool after_newline_ = false;
};

class Builder : public nlohmann::json_sax<nlohmann::json> {
 public:
  Builder(std::string_view text, const std::string& file, const int* line)
      : text_(text), file_(file), line_(line) {}

  JsonNode TakeRoot() { return std::move(root_); }

  bool null() override { return Add(JsonNode::Kind::Null), true; }
  bool boolean(bool value) override { return Add(JsonNode::Kind::Boolean).boolean = value, true; }
  bool number_integer(number_integer_t value) override {
    return Add(JsonNode::Kind::Integer).integer = value, true;
  }
  bool number_unsigned(number_unsigned_t value) override {
    constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
    Add(JsonNode::Kind::Integer).integer = static_cast<std::int64_t>(std::min<std::uint64_t>(value, kMost));
    return true;
  }
  bool number_float(number_float_t, const string_t&) override { return Add(JsonNode::Kind::Fraction), true; }
  bool string(string_t& value) override { return Add(JsonNode::Kind::Text).text = value, true; }
  bool binary(binary_t&) override { return false; }
  bool start_object(std::size_t) override { return Enter(Add(JsonNode::Kind::Object)); }
  bool start_array(std::size_t) override { return Enter(Add(JsonNode::Kind::List)); }
  bool end_object() override { return Leave(); }
  bool end_array() override { return Leave(); }

  bool key(string_t& name) override {
    for (const JsonMember& member : open_.back()->members)
      if (member.key == name) throw FileError(Where() + ": the key \"" + name + "\" is given twice");
    open_.back()->members.push_back({name, *line_, {}});
    return true;
  }

  bool parse_error(std::size_t position, const std::string&,
                   const nlohmann::detail::exception& error) override {
    const std::string_view before = text_.substr(0, position > 0 ? position - 1 : 0);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t line_start = before.rfind('\n') + 1;  // 0 on the first line
    const std::string message = error.what();
    const std::size_t detail = message.find(": ");
    throw FileError(file_ + ":" + std::to_string(line) + ":" +
                    std::to_string(before.size() - line_start + 1) + ": not valid JSON" +
                    (detail == std::string::npos ? "" : message.substr(detail)));
  }

 private:
  std::string Where() const { return file_ + ":" + std::to_string(*line_); }

  JsonNode& Add(JsonNode::Kind kind) {
    JsonNode* node = &root_;
    if (!open_.empty()) {
      JsonNode& parent = *open_.back();
      node =
          parent.kind == JsonNode::Kind::List ? &parent.items.emplace_back() : &parent.members.back().value;
    }
    node->kind = kind;
    node->line = *line_;
    return *node;
  }

  bool Enter(JsonNode& node) {
    if (open_.size() == kDeepest) throw FileError(Where() + ": nested too deeply");
    open_.push_back(&node);
    return true;
  }

  bool Leave() {
    open_.pop_back();
    return true;
  }

  std::string_view text_;
  const std::string& file_;
  const int* line_;
  JsonNode root_;
  std::vector<JsonNode*> open_;  // only the innermost grows, so these pointers stay valid
};

constexpr const char* kText = "expected a text";
constexpr const char* kWhole = "expected a whole number";
constexpr const char* kBoolean = "expected true or false";
constexpr const char* kList = "expected a list";
constexpr const char* kObject = "expected an object";

}  // namespace

JsonNode ParseJson(std::string_view text, const std::string& file) {
  int line = 1;
  Builder builder(text, file, &line);
  const CountingIterator begin(text.data(), &line);
  const CountingIterator end(text.data() + text.size(), &line);
  nlohmann::json::sax_parse(begin, end, &builder);
  return builder.TakeRoot();
}

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
