#include <algorithm>
#include <charconv>
#include <set>
#include <stdexcept>

#include "model/rules.h"
#include "settings/file.h"
#include "text/quoted.h"
#include "text/strings.h"

namespace settings {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Marks[] = {"\xFF\xFE", "\xFE\xFF"};

std::string Quote(std::string_view text) { return '"' + std::string(text) + '"'; }

struct Version {
  int major, minor;
};
std::optional<Version> VersionOf(std::string_view line) {
  if (!line.starts_with(kFirstWords)) return std::nullopt;
  const std::string rest = text::Trim(line.substr(kFirstWords.size()));
  Version version{};
  const char* const end = rest.data() + rest.size();
  const auto major = std::from_chars(rest.data(), end, version.major);
  if (major.ec != std::errc() || major.ptr == end || *major.ptr != '.') return std::nullopt;
  const auto minor = std::from_chars(major.ptr + 1, end, version.minor);
  if (minor.ec != std::errc() || minor.ptr != end) return std::nullopt;
  return version;
}

const Field* FieldOfText(int txt_nvi_index) {
  const auto shows_it = [=](const Field& field) {
    return field.row->control == model::txtNvi(txt_nvi_index);
  };
  return &*std::ranges::find_if(Fields(), shows_it);
}

class Reader {
 public:
  SettingsFile Read(std::string_view text) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    if (std::ranges::any_of(kUtf16Marks, [=](auto mark) { return text.starts_with(mark); }))
      Fail("the file is not UTF-8 text");
    else if (TakeFirstLine(NextLine(text)))
      ReadLines(text);
    std::ranges::stable_sort(file_.findings, {}, &Finding::line);
    return std::move(file_);
  }

 private:
  void Fail(std::string text) { file_.findings.push_back({line_, true, std::move(text), nullptr}); }
  void Warn(std::size_t line, std::string text, const Field* field = nullptr) {
    file_.findings.push_back({line, false, std::move(text), field});
  }

  static std::string_view NextLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
  }

  bool TakeFirstLine(std::string_view line) {
    const auto version = VersionOf(line);
    if (!version) {
      Fail("this is no settings file: its first line is not " +
           Quote(std::string(kFirstWords) + std::to_string(kMajorVersion) + '.' +
                 std::to_string(kMinorVersion)));
      return false;
    }
    const std::string format =
        "the format " + std::to_string(version->major) + '.' + std::to_string(version->minor);
    if (version->major != kMajorVersion) {
      Fail(format + " is another than this program reads, which is " + std::to_string(kMajorVersion));
      return false;
    }
    is_newer_ = version->minor > kMinorVersion;
    if (is_newer_) Warn(line_, format + " is newer than this program; what it adds is ignored");
    return true;
  }

  void ReadLines(std::string_view text) {
    while (!text.empty()) {
      ++line_;
      ReadLine(NextLine(text));
    }
    CheckOrigin();
    CheckValues();
  }

  void ReadLine(std::string_view bytes) {
    if (!text::IsUtf8(bytes)) return Fail("the line is not UTF-8 text");
    std::string line(bytes);
    std::ranges::replace(line, '\t', ' ');
    line = text::Trim(line);
    if (line.empty() || line.starts_with('#')) return;
    if (std::ranges::any_of(line, [](char c) { return static_cast<unsigned char>(c) < ' '; }))
      return Fail("the line contains a control character");
    if (line.starts_with('[')) return TakeSection(line);
    const std::size_t sign = line.find('=');
    if (sign == std::string::npos) return Fail("there is no \"=\" in " + Quote(line));
    const std::string name = text::Trim(line.substr(0, sign)), value = text::Trim(line.substr(sign + 1));
    section_ == Section::Origin ? TakeOrigin(name, value) : TakeSetting(name, value);
  }

  void TakeSection(const std::string& line) {
    const std::string name = text::Trim(line.substr(0, line.find('#')));
    if (name == kSettingsSection)
      section_ = Section::Settings;
    else if (name == kCalibrationSection)
      section_ = Section::Calibration;
    else
      Fail("there is no section " + name);
  }

  void TakeOrigin(const std::string& key, const std::string& value) {
    const auto text = text::Unquoted(value);
    if (!text) return Fail("the quotation marks of " + value + " do not fit");
    if (key == kNotReadKey) {
      const std::size_t colon = std::min(text->find(':'), text->size());
      file_.settings.unread.push_back(
          {text->substr(0, colon), text::Trim(text->substr(std::min(colon + 1, text->size())))});
      return;
    }
    const auto row = std::ranges::find(OriginRows(), key, &OriginRow::key);
    if (row == OriginRows().end()) {
      if (FindField(key)) return Fail(key + " belongs below " + std::string(kSettingsSection));
      if (!is_newer_) Fail("there is no information " + Quote(key));
      return;
    }
    if (!keys_.insert(key).second) return Fail(Quote(key) + " is given twice");
    file_.settings.origin.*row->text = *text;
  }

  void TakeSetting(const std::string& name, const std::string& value_and_comment) {
    const Field* field = FindField(name);
    if (!field) return FailName(name);
    if (field->is_calibration != (section_ == Section::Calibration))
      return Fail(name + " belongs below " +
                  std::string(field->is_calibration ? kCalibrationSection : kSettingsSection));
    std::size_t& line = lines_[PositionOf(*field)];
    if (line != 0) return Fail(name + " is already set in line " + std::to_string(line));
    line = line_;
    const std::size_t comment = (' ' + value_and_comment).find(" #");
    const std::string value = text::Trim(value_and_comment.substr(0, comment));
    const Value read = ReadValue(*field, value);
    if (!read.problem.empty()) return Fail(read.problem);
    file_.settings.TextOf(*field) = read.text;
  }

  void FailName(const std::string& name) {
    const auto in_any_case = [&](const Field& each) { return text::EqualIgnoringCase(each.name(), name); };
    const auto like = std::ranges::find_if(Fields(), in_any_case);
    if (like != Fields().end())
      return Fail("there is no field " + Quote(name) + "; is " + std::string(like->name()) + " meant?");
    const bool is_shown = std::ranges::count(model::Catalogue(), name, &model::CatalogueRow::name) != 0;
    Fail(is_shown ? name + " cannot be set" : "there is no field " + Quote(name));
  }

  void CheckOrigin() {
    line_ = 1;
    const std::string& program_id = file_.settings.origin.program_id;
    const std::string ours(ThermostatProgramId());
    if (program_id.empty())
      Fail("the line \"program ID = " + ours + "\" is missing");
    else if (!IsThermostat(program_id))
      Fail("the program ID is " + program_id + ", not the thermostat's, " + ours);
    if (file_.settings.HasNone() && !file_.HasErrors()) Warn(1, "the file sets nothing");
  }

  void CheckValues() {
    for (const Field& field : Fields()) {
      const auto& text = file_.settings.TextOf(field);
      const std::size_t line = lines_[PositionOf(field)];
      if (!text) continue;
      if (IsOutsideLimits(field, *text))
        Warn(line, std::string(field.name()) + " is outside the limits, which are " + LimitsText(field),
             &field);
      if (field.is_calibration && file_.settings.origin.neuron_id.empty())
        Warn(line, std::string(field.name()) + " belongs to one device, but there is no Neuron ID", &field);
    }
    for (const BrokenRule& broken : BrokenRules(file_.settings))
      Warn(std::max(lines_[PositionOf(*broken.field)], lines_[PositionOf(*broken.against)]), TextOf(broken),
           broken.field);
  }

  enum class Section { Origin, Settings, Calibration };

  SettingsFile file_;
  std::size_t line_ = 1;
  bool is_newer_ = false;
  Section section_ = Section::Origin;
  std::set<std::string> keys_;
  /// Of each field, 0 if it is not there.
  std::vector<std::size_t> lines_ = std::vector<std::size_t>(Fields().size());
};

}  // namespace

std::string FindingText(const std::string& file, const Finding& finding) {
  return file + ':' + std::to_string(finding.line) + ": " + (finding.is_error ? "" : "warning: ") +
         finding.text;
}

bool SettingsFile::HasErrors() const {
  return std::ranges::any_of(findings, [](const Finding& finding) { return finding.is_error; });
}

Value ReadValue(const Field& field, const std::string& value) {
  const std::string name(field.name());
  if (value.empty()) return {{}, name + " has no value"};
  const std::string unit(UnitName(field.unit()));
  const std::size_t blank = std::min(value.find(' '), value.size());
  const std::string text = value.substr(0, blank), given = text::Trim(value.substr(blank));
  if (given != unit) {
    if (given.empty()) return {{}, name + " is in " + unit + ": \"" + text + ' ' + unit + "\""};
    return {{},
            unit.empty() ? name + " has no unit: " + Quote(value)
                         : name + " is in " + unit + ", not in " + given};
  }
  if (const auto problem = ProblemOf(field, text)) return {{}, *problem};
  return {Normalized(field, text), {}};
}

SettingsFile ParseSettings(std::string_view text) { return Reader().Read(text); }

std::string TextOf(const BrokenRule& rule) {
  using enum model::CrossRule::Relation;
  const std::string field(rule.field->name()), other(rule.against->name());
  switch (rule.relation) {
    case DeadBandAbove:
      return field + " is less than DeadBand above " + other;
    case DeadBandBelow:
      return field + " is less than DeadBand below " + other;
    case AtMost:
      return field + " is above " + other;
    case AtLeast:
      return field + " is below " + other;
  }
  return {};
}

SettingsFile ReadSettingsFile(const platform::Files& files, const std::string& path) {
  constexpr std::size_t kLargestFile = 1 << 20;
  if (!files.FileExists(path)) throw std::runtime_error("there is no file " + path);
  const std::string text = files.ReadStart(path, kLargestFile + 1);
  if (text.empty()) throw std::runtime_error(path + " cannot be read or is empty");
  if (text.size() > kLargestFile) throw std::runtime_error(path + " is larger than a settings file can be");
  return ParseSettings(text);
}

std::vector<BrokenRule> BrokenRules(
    const std::function<std::optional<std::string>(const Field& field)>& shown) {
  std::vector<BrokenRule> broken;
  std::set<std::pair<int, int>> seen;  // each pair has a rule for either field that is left
  for (const model::CrossRule& rule : model::CrossRules()) {
    if (!seen.insert(std::minmax(rule.repaired, rule.against)).second) continue;
    const auto text_of = [&](int index) { return shown(*FieldOfText(index)); };
    if (!text_of(rule.repaired) || !text_of(rule.against)) continue;
    if (rule.IsDeadBand() && !text_of(model::kDeadBandField)) continue;
    if (model::RepairOf(rule, [&](int index) { return text_of(index).value_or("0"); }))
      broken.push_back({FieldOfText(rule.repaired), FieldOfText(rule.against), rule.relation});
  }
  return broken;
}

std::vector<BrokenRule> BrokenRules(const DeviceSettings& settings) {
  const auto broken_in = [&](int units) {
    return BrokenRules([&](const Field& field) {
      const auto& text = settings.TextOf(field);
      return text ? std::optional(Shown(field, *text, units)) : std::nullopt;
    });
  };
  std::vector<BrokenRule> broken = broken_in(0);
  const std::vector<BrokenRule> in_fahrenheit = broken_in(1);
  std::erase_if(broken, [&](const BrokenRule& rule) { return !std::ranges::count(in_fahrenheit, rule); });
  return broken;
}

}  // namespace settings
