#include "help_file/project.h"

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <tuple>
#include <utility>

#include "model/catalogue.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace help_file {
namespace {

using model::Unit;
using text::Escaped;

std::string FromTo(double least, double most, const std::string& unit) {
  return text::ShortestText(least) + "&nbsp;to&nbsp;" + text::ShortestText(most) +
         (unit.empty() ? "" : "&nbsp;" + unit);
}

/// Empty for temperatures, whose unit the user chooses.
std::string UnitInWords(Unit unit) {
  using Words = std::pair<Unit, const char*>;
  static constexpr Words kWords[] = {
      {Unit::Percent, "%"}, {Unit::Seconds, "seconds"}, {Unit::Minutes, "minutes"}, {Unit::Hours, "hours"}};
  const auto* const found = std::ranges::find(kWords, unit, &Words::first);
  return found != std::end(kWords) ? found->second : "";
}

/// The place of the value in the device: the network variable and, if it has several fields, the field.
std::string NameInDevice(const model::CatalogueRow& row) {
  const std::string point(row.point), name(row.name);
  return name == point || name.starts_with(point + ".") ? name : point + "." + name;
}

std::string Fact(const std::string& name, const std::string& value) {
  return "<tr><th>" + name + "</th><td>" + value + "</td></tr>\n";
}

constexpr const char *kTitle = "QM5R-FC PIR Configure Help", *kCompiledFile = "QM5R-FCConfigure.chm";

// The viewer's window: contents, index and search beside the topic, and its own buttons.
constexpr int kThreePanes = 0x20, kFollowsTopic = 0x100 | 0x200, kSearch = 0x400, kKeepsPlace = 0x40000;
constexpr int kHide = 0x2, kBack = 0x4, kForward = 0x8, kHome = 0x40, kOptions = 0x1000, kPrint = 0x2000;
constexpr int kContentsWidth = 260;
constexpr const char* kBounds = "[120,80,1000,720]";

std::string FileOf(model::ControlRef control) {
  std::string name = text::ToLower(NameOf(control));
  std::erase_if(name, [](char c) { return c == '(' || c == ')'; });
  return name + ".html";
}

std::string Link(const std::string& file, const std::string& title) {
  return "<a href=\"" + file + "\">" + Escaped(title) + "</a>";
}

std::string SiteMapObject(const std::string& name, const std::string& file) {
  return "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"" + Escaped(name) +
         "\"><param name=\"Local\" value=\"" + file + "\"></OBJECT>\n";
}

std::string SiteMap(const std::string& entries) {
  return "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n<HTML>\n<HEAD></HEAD>\n<BODY>\n<UL>\n" + entries +
         "</UL>\n</BODY>\n</HTML>\n";
}

/// The frame of a field; null for those above the tabs.
const model::FramePlace* FrameOf(model::ControlRef control) {
  for (const model::FramePlace& frame : model::Frames())
    if (std::ranges::count(frame.fields, control, &model::FieldRow::control) != 0) return &frame;
  return nullptr;
}

/// The field's frame and label.
std::string TitleOf(model::ControlRef control) {
  if (control.array == model::ScreenArray::lbModel) return "Thermostat model";
  if (control.array == model::ScreenArray::lbHvacType) return "HVAC type";
  const std::string frame = text::WithoutAccelerator(FrameOf(control)->caption);
  const std::string label(model::FieldOf(control)->label);
  return label.empty() ? frame : frame + ": " + label;
}

/// Null if the field is not in the catalogue.
const model::CatalogueRow* RowOf(model::ControlRef control) {
  const auto rows = model::Catalogue();
  const auto row = std::ranges::find(rows, control, &model::CatalogueRow::control);
  return row != rows.end() ? &*row : nullptr;
}

/// The range in both unit systems, or once if they are equal; empty for a field without limits.
std::string TopicRange(model::ControlRef control) {
  const model::CatalogueRow* const row = RowOf(control);
  if (!row || !row->limits) return {};
  const model::CatalogueLimits& limits = *row->limits;
  const Unit unit = model::FieldOf(control)->unit;
  if (unit != Unit::Temperature && unit != Unit::TemperatureDifference)
    return FromTo(limits.si_min, limits.si_max, UnitInWords(unit));
  return FromTo(limits.si_min, limits.si_max, "&deg;C") + ", or " +
         FromTo(limits.us_min, limits.us_max, "&deg;F");
}

/// The rows of the field's table of facts: range, rounding, names in messages and in the device.
std::string FactsOf(const FieldSource& field) {
  std::string facts;
  if (const model::FramePlace* const frame = FrameOf(field.control))
    facts +=
        Fact("On the screen",
             Escaped("tab " +
                     text::WithoutAccelerator(model::kPageCaptions[static_cast<std::size_t>(frame->page)]) +
                     ", frame " + text::WithoutAccelerator(frame->caption)));
  if (const std::string range = TopicRange(field.control); !range.empty()) facts += Fact("Range", range);
  const model::CatalogueRow* const row = RowOf(field.control);
  if (!row) return facts;
  if (row->round_step != 0)
    facts += Fact("Shown", "rounded to steps of " + text::ShortestText(row->round_step) + " degree");
  if (row->offset_value)
    facts += Fact("At a limit",
                  "a value exactly at a limit is stored 0.05&nbsp;&deg;C or 0.025&nbsp;&deg;F inside it");
  if (!row->description.empty())
    facts += Fact("In messages", "&ldquo;" + Escaped(row->description) + "&rdquo;");
  return facts + Fact("In the device", "<code>" + Escaped(NameInDevice(*row)) + "</code>");
}

/// The table of the list's items; empty for other fields. Throws SourceError if the source lacks an item's
/// meaning.
std::string ChoicesOf(const FieldSource& field) {
  if (field.control.array != model::ScreenArray::cbNvi) return {};
  std::string choices = "<h2>Choices</h2>\n<table class=\"choices\">\n";
  for (const std::string_view item : model::ListItems(field.control.index)) {
    const auto meaning = field.items.find(item);
    if (meaning == field.items.end())
      throw SourceError(NameOf(field.control) + ": no meaning for " + std::string(item));
    choices += Fact("<code>" + Escaped(item) + "</code>", meaning->second);
  }
  return choices + "</table>\n";
}

class Project {
 public:
  explicit Project(const std::vector<File>& sources) {
    std::string order;
    std::map<std::string, TopicSource> topics;
    for (const File& source : sources) {
      if (source.name == "contents.txt")
        order = source.content;
      else if (source.name.ends_with(".html"))
        topics.emplace(source.name, ParseSource(source));
      else if (source.name.ends_with(".css"))
        files_.push_back(source);
    }
    std::istringstream in(order);
    for (std::string name; in >> name;) {
      auto found = topics.extract(name);
      if (found.empty()) throw SourceError("contents.txt: no source " + name);
      topics_.push_back(std::move(found.mapped()));
    }
    if (!topics.empty()) throw SourceError("contents.txt: " + topics.begin()->first + " is missing");
    for (const TopicSource& topic : topics_)
      for (const FieldSource& field : topic.fields)
        if (!fields_.emplace(NameOf(field.control), &field).second)
          throw SourceError(topic.file + ": " + NameOf(field.control) + " is described twice");
    for (const model::FieldRow& field : model::Fields())
      if (!fields_.contains(NameOf(field.control)))
        throw SourceError(NameOf(field.control) + " is not described");
  }

  std::vector<File> Make() {
    for (const TopicSource& topic : topics_) AddTopic(topic);
    std::string index;
    for (const auto& [order, keyword, file] : index_) index += SiteMapObject(keyword, file);
    files_.push_back({kContentsFile, SiteMap(contents_)});
    files_.push_back({kIndexFile, SiteMap(index)});
    files_.push_back({kProjectFile, ProjectText()});
    return std::move(files_);
  }

 private:
  void AddTopic(const TopicSource& topic) {
    std::string body = topic.text;
    if (const auto mark = body.find(kFieldsMark); mark != std::string::npos)
      body.replace(mark, 1, TableOf(topic.fields));
    AddPage(topic.file, topic.title, body, topic.keywords);
    if (topic.context != 0) contexts_.emplace(topic.context, topic.file);
    contents_ += SiteMapObject(topic.title, topic.file);
    if (topic.fields.empty()) return;
    contents_ += "<UL>\n";
    for (const FieldSource& field : topic.fields) AddField(topic, field);
    contents_ += "</UL>\n";
  }

  void AddField(const TopicSource& topic, const FieldSource& field) {
    const std::string file = FileOf(field.control), title = TitleOf(field.control);
    const std::string body = "<p class=\"meaning\">" + Escaped(model::FieldOf(field.control)->meaning) +
                             "</p>\n<table class=\"facts\">\n" + FactsOf(field) + "</table>\n" + field.text +
                             ChoicesOf(field) +
                             "<p class=\"see\">See also: " + Link(topic.file, topic.title) + "</p>\n";
    AddPage(file, title, body, field.keywords);
    if (const model::CatalogueRow* row = RowOf(field.control)) AddKeyword(std::string(row->name), file);
    contexts_.emplace(model::HelpContextOf(field.control), file);
    contents_ += SiteMapObject(title, file);
  }

  void AddPage(const std::string& file, const std::string& title, const std::string& body,
               const std::vector<std::string>& keywords) {
    files_.push_back(
        {file,
         "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\">\n<html>\n<head>\n"
         "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1252\">\n<title>" +
             Escaped(title) + "</title>\n<link rel=\"stylesheet\" type=\"text/css\" href=\"help.css\">\n" +
             "</head>\n<body>\n<h1>" + Escaped(title) + "</h1>\n" + Filled(file, body) +
             "</body>\n</html>\n"});
    AddKeyword(title, file);
    for (const std::string& keyword : keywords) AddKeyword(keyword, file);
  }

  void AddKeyword(const std::string& keyword, const std::string& file) {
    index_.emplace(text::ToLower(keyword), keyword, file);
  }

  /// Replaces {{link <control> <words>}}, whose default words are the field's title, and {{range <control>}}.
  std::string Filled(const std::string& file, std::string body) const {
    for (auto start = body.find("{{"); start != std::string::npos; start = body.find("{{", start)) {
      const auto end = body.find("}}", start);
      const auto [what, rest] = text::SplitAtFirst(body.substr(start + 2, end - start - 2), " ");
      const auto [control, words] = text::SplitAtFirst(rest, " ");
      const auto field = fields_.find(control);
      if (end == std::string::npos || field == fields_.end() || (what != "link" && what != "range"))
        throw SourceError(file + ": no such placeholder: " + body.substr(start, 40));
      const model::ControlRef asked = field->second->control;
      body.replace(
          start, end + 2 - start,
          what == "range" ? TopicRange(asked) : Link(FileOf(asked), words.empty() ? TitleOf(asked) : words));
    }
    return body;
  }

  static std::string TableOf(const std::vector<FieldSource>& fields) {
    std::string table = "<table class=\"fields\">\n<tr><th>Field</th><th>Meaning</th><th>Range</th></tr>\n";
    for (const FieldSource& field : fields) {
      const std::string range = TopicRange(field.control);
      table += "<tr><td>" + Link(FileOf(field.control), TitleOf(field.control)) + "</td><td>" +
               Escaped(model::FieldOf(field.control)->meaning) + "</td><td>" +
               (field.control.array == model::ScreenArray::cbNvi ? "list"
                : range.empty()                                  ? "read-only"
                                                                 : range) +
               "</td></tr>\n";
    }
    return table + "</table>\n";
  }

  std::string ProjectText() const {
    const std::string start = topics_.front().file;
    std::ostringstream text;
    // The viewer reads the plain index; the compiler's binary index would differ with each build.
    text << "[OPTIONS]\nCompatibility=1.1 or later\nCompiled file=" << kCompiledFile
         << "\nContents file=" << kContentsFile << "\nIndex file=" << kIndexFile
         << "\nDefault topic=" << start
         << "\nDefault Window=main\nFull-text search=Yes\nBinary Index=No\nLanguage=0x409 English (United "
            "States)\nTitle="
         << kTitle << "\n\n[WINDOWS]\nmain=\"" << kTitle << "\",\"" << kContentsFile << "\",\"" << kIndexFile
         << "\",\"" << start << "\",\"" << start << "\",,,,,"
         << "0x" << std::hex << (kThreePanes | kFollowsTopic | kSearch | kKeepsPlace) << std::dec << ','
         << kContentsWidth << ',' << "0x" << std::hex
         << (kHide | kBack | kForward | kHome | kOptions | kPrint) << std::dec << ',' << kBounds
         << ",,,,,,,0\n\n[FILES]\n";
    // The compiler maps contexts in the order of the files: by number, then files without a context.
    std::set<std::string> listed;
    const auto list = [&](const std::string& file) {
      if (listed.insert(file).second) text << file << '\n';
    };
    for (const auto& [context, file] : contexts_) list(file);
    for (const File& file : files_)
      if (file.name.ends_with(".html") || file.name.ends_with(".css")) list(file.name);
    text << "\n[ALIAS]\n";
    for (const auto& [context, file] : contexts_) text << "IDH_" << context << '=' << file << '\n';
    text << "\n[MAP]\n";
    for (const auto& [context, file] : contexts_) text << "#define IDH_" << context << ' ' << context << '\n';
    return text.str();
  }

  std::vector<TopicSource> topics_;
  std::map<std::string, const FieldSource*, std::less<>> fields_;
  std::vector<File> files_;
  std::map<int, std::string> contexts_;
  /// In the viewer's search order, without letter case: the keyword in lower case, the keyword, its topic.
  std::set<std::tuple<std::string, std::string, std::string>> index_;
  std::string contents_;
};

}  // namespace

std::vector<File> MakeProject(const std::vector<File>& sources) { return Project(sources).Make(); }

}  // namespace help_file
