#include "help_file/source.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <iterator>
#include <sstream>
#include <utility>

#include "startup/identity.h"
#include "text/strings.h"

namespace help_file {
namespace {

constexpr std::pair<std::string_view, int> kContexts[] = {
    {"units", startup::kUnitsTopic},
    {"apply", startup::kApplyTopic},
    {"cancel", startup::kCancelTopic},
    {"refresh", startup::kRefreshTopic},
    {"exit", startup::kExitTopic},
    {"log", startup::kLogTopic},
    {"registration", startup::kRegistrationTopic},
    {"settings", startup::kSettingsTopic},
};

using model::ScreenArray;
constexpr std::pair<std::string_view, ScreenArray> kControls[] = {
    {"txtNvi", ScreenArray::txtNvi},
    {"cbNvi", ScreenArray::cbNvi},
    {"txtMajorVersion", ScreenArray::txtMajorVersion},
    {"txtMinorVersion", ScreenArray::txtMinorVersion},
    {"lbModel", ScreenArray::lbModel},
    {"lbHvacType", ScreenArray::lbHvacType},
};

bool IsArray(ScreenArray array) { return array == ScreenArray::txtNvi || array == ScreenArray::cbNvi; }

int NumberIn(std::string_view text) {
  int number = -1;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

class Parser {
 public:
  explicit Parser(const File& file) : file_(file) { topic_.file = file.name; }

  TopicSource Parse() {
    std::istringstream in(file_.content);
    for (std::string line; std::getline(in, line);) {
      ++line_;
      if (line.starts_with('@'))
        Directive(text::SplitAtFirst(line.substr(1), " "));
      else
        Text() += line + '\n';
    }
    if (topic_.title.empty()) Fail("no title");
    return std::move(topic_);
  }

 private:
  void Directive(const text::HeadAndRest& line) {
    const auto& [directive, argument] = line;
    if (directive == "title")
      topic_.title = argument;
    else if (directive == "page")
      Page(NumberIn(argument));
    else if (directive == "context")
      topic_.context = Context(argument);
    else if (directive == "index")
      (topic_.fields.empty() ? topic_.keywords : topic_.fields.back().keywords).push_back(argument);
    else if (directive == "fields")
      Text() += kFieldsMark;
    else if (directive == "field")
      Field(argument);
    else if (directive == "item")
      Item(text::SplitAtFirst(argument, " "));
    else
      Fail("unknown directive: " + directive);
  }

  std::string& Text() { return topic_.fields.empty() ? topic_.text : topic_.fields.back().text; }

  void Page(int page) {
    if (page < 0 || page >= static_cast<int>(model::kPageCaptions.size())) Fail("no page");
    topic_.page = page;
    topic_.title = model::kPageCaptions[static_cast<std::size_t>(page)];
    std::erase(topic_.title, '&');
    topic_.context = model::kPageTopics[static_cast<std::size_t>(page)];
  }

  int Context(std::string_view name) {
    const auto* found = std::ranges::find(kContexts, name, &std::pair<std::string_view, int>::first);
    if (found == std::end(kContexts)) Fail("no context");
    return found->second;
  }

  void Field(const std::string& name) {
    const model::ControlRef control = ControlNamed(name);
    if (control.array == ScreenArray::None) Fail("no control");
    topic_.fields.push_back({control, {}, {}, {}});
  }

  void Item(const text::HeadAndRest& item) {
    FieldSource& field = LastField();
    if (field.control.array != ScreenArray::cbNvi) Fail("not a list");
    const auto items = model::ListItems(field.control.index);
    if (std::ranges::find(items, item.head) == items.end()) Fail("no item of the list");
    if (!field.items.emplace(item.head, item.rest).second) Fail("item described twice");
  }

  FieldSource& LastField() {
    if (topic_.fields.empty()) Fail("not about a field");
    return topic_.fields.back();
  }

  [[noreturn]] void Fail(const std::string& what) const {
    throw SourceError(file_.name + ":" + std::to_string(line_) + ": " + what);
  }

  const File& file_;
  int line_ = 0;
  TopicSource topic_;
};

}  // namespace

TopicSource ParseSource(const File& file) { return Parser(file).Parse(); }

model::ControlRef ControlNamed(std::string_view name) {
  const std::string_view array = name.substr(0, name.find('('));
  const auto* found = std::ranges::find(kControls, array, &std::pair<std::string_view, ScreenArray>::first);
  if (found == std::end(kControls)) return {};
  if (!IsArray(found->second)) return {found->second};
  const int index = array.size() < name.size() ? NumberIn(name.substr(array.size() + 1)) : -1;
  const bool exists = index >= 0 && (found->second == ScreenArray::txtNvi || index < model::kChoiceListCount);
  return exists ? model::ControlRef{found->second, index} : model::ControlRef{};
}

std::string NameOf(model::ControlRef control) {
  for (const auto& [name, array] : kControls)
    if (array == control.array)
      return std::string(name) + (IsArray(array) ? "(" + std::to_string(control.index) + ")" : "");
  return {};
}

std::vector<File> ReadFolder(const std::filesystem::path& folder) {
  std::vector<File> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    std::ifstream in(entry.path(), std::ios::binary);
    in.exceptions(std::ios::badbit | std::ios::failbit);
    files.push_back({entry.path().filename().string(), {std::istreambuf_iterator<char>(in), {}}});
  }
  std::ranges::sort(files, {}, &File::name);
  return files;
}

void WriteFolder(const std::filesystem::path& folder, const std::vector<File>& files) {
  std::filesystem::create_directories(folder);
  for (const File& file : files) {
    std::ofstream out;
    out.exceptions(std::ios::badbit | std::ios::failbit);
    out.open(folder / file.name, std::ios::binary | std::ios::trunc);
    out << file.content;
    out.close();
  }
}

}  // namespace help_file
