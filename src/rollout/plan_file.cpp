#include <algorithm>
#include <charconv>

#include "rollout/plan.h"
#include "text/quoted.h"
#include "text/strings.h"

namespace rollout {
namespace {

constexpr std::string_view kPlanFirstLine = "QM5R plan 1.0";
constexpr std::string_view kDeviceLine = "[device]";
constexpr std::string_view kArrow = " -> ";
constexpr std::string_view kLeftOutKey = "left out";
constexpr const char* kPlanLineEnd = "\r\n";

template <class Owner>
struct TextRow {
  std::string_view key;
  std::string Owner::*text;
};
constexpr TextRow<Plan> kPlanRows[] = {
    {"made", &Plan::made}, {"made by", &Plan::made_by}, {"standard", &Plan::standard}};
constexpr TextRow<DevicePlan> kDeviceRows[] = {
    {"path", &DevicePlan::path}, {"Neuron ID", &DevicePlan::neuron_id}, {"problem", &DevicePlan::problem}};

std::string Line(std::string_view key, const std::string& value) {
  return std::string(key) + " = " + value + kPlanLineEnd;
}

template <class Owner, std::size_t count>
std::string Lines(const TextRow<Owner> (&rows)[count], const Owner& owner) {
  std::string lines;
  for (const TextRow<Owner>& row : rows)
    if (!(owner.*row.text).empty()) lines += Line(row.key, text::Quoted(owner.*row.text));
  return lines;
}

/// A device may hold what no value of the field can be; that is in quotation marks.
std::string BeforeText(const Change& change) {
  return ProblemOf(*change.field, change.before) ? text::InQuotes(change.before)
                                                 : TextWithUnit(*change.field, change.before);
}
settings::Value ReadBefore(const settings::Field& field, const std::string& value) {
  if (!value.starts_with('"')) return ReadValue(field, value);
  const auto text = text::Unquoted(value);
  return text ? settings::Value{*text, {}}
              : settings::Value{{}, "the quotation marks of " + value + " do not fit"};
}

class PlanReader {
 public:
  PlanFile Read(std::string_view text) {
    std::string_view rest = text;
    if (rest.starts_with("\xEF\xBB\xBF")) rest.remove_prefix(3);
    while (!rest.empty()) {
      const std::size_t end = std::min(rest.find('\n'), rest.size());
      ++line_;
      std::string_view line = rest.substr(0, end);
      if (line.ends_with('\r')) line.remove_suffix(1);
      if (!TakeLine(text::Trim(line))) break;
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    if (text.empty()) line_ = 1, TakeLine({});
    CheckDevice();
    return std::move(file_);
  }

 private:
  void Fail(std::string text) { file_.findings.push_back({line_, true, std::move(text), nullptr}); }

  /// False if the file is no plan.
  bool TakeLine(const std::string& line) {
    if (line_ <= 1) {
      if (line == kPlanFirstLine) return true;
      Fail("this is no plan: its first line is not \"" + std::string(kPlanFirstLine) + '"');
      return false;
    }
    if (line.empty() || line.starts_with('#')) return true;
    if (!text::IsUtf8(line)) return Fail("the line is not UTF-8 text"), true;
    if (line == kDeviceLine) {
      CheckDevice();
      file_.plan.devices.emplace_back();
      return true;
    }
    const std::size_t sign = line.find('=');
    if (sign == std::string::npos) return Fail("there is no \"=\" in \"" + line + '"'), true;
    Take(text::Trim(line.substr(0, sign)), text::Trim(line.substr(sign + 1)));
    return true;
  }

  void Take(const std::string& key, const std::string& value) {
    if (file_.plan.devices.empty()) {
      if (!TakeText(kPlanRows, file_.plan, key, value)) Fail("there is no information \"" + key + '"');
      return;
    }
    DevicePlan& device = file_.plan.devices.back();
    if (TakeText(kDeviceRows, device, key, value)) return;
    if (key == kLeftOutKey) return TakeLeftOut(device, value);
    if (key == "same") {
      const auto read = std::from_chars(value.data(), value.data() + value.size(), device.same);
      if (read.ec != std::errc() || read.ptr != value.data() + value.size())
        Fail("\"" + value + "\" is no number of fields");
      return;
    }
    TakeChange(device, key, value);
  }

  template <class Owner, std::size_t count>
  bool TakeText(const TextRow<Owner> (&rows)[count], Owner& owner, const std::string& key,
                const std::string& value) {
    const auto row = std::ranges::find(rows, key, &TextRow<Owner>::key);
    if (row == std::end(rows)) return false;
    if (const auto text = text::Unquoted(value))
      owner.*row->text = *text;
    else
      Fail("the quotation marks of " + value + " do not fit");
    return true;
  }

  const settings::Field* FieldNamed(const std::string& name) {
    const settings::Field* field = settings::FindField(name);
    if (!field) Fail("there is no field \"" + name + '"');
    return field;
  }

  void TakeLeftOut(DevicePlan& device, const std::string& value) {
    const auto text = text::Unquoted(value);
    if (!text) return Fail("the quotation marks of " + value + " do not fit");
    const std::size_t colon = std::min(text->find(':'), text->size());
    if (const settings::Field* field = FieldNamed(text->substr(0, colon)))
      device.left_out.push_back({field, text::Trim(text->substr(std::min(colon + 1, text->size())))});
  }

  void TakeChange(DevicePlan& device, const std::string& name, const std::string& value) {
    const settings::Field* field = FieldNamed(name);
    if (!field) return;
    if (std::ranges::count(device.changes, field, &Change::field) != 0)
      return Fail(name + " is given twice for a device");
    const std::size_t arrow = value.find(kArrow);
    if (arrow == std::string::npos)
      return Fail(name + " has no \"" + std::string(kArrow) + "\" between the values before and after");
    const settings::Value before = ReadBefore(*field, text::Trim(value.substr(0, arrow)));
    const settings::Value after = ReadValue(*field, text::Trim(value.substr(arrow + kArrow.size())));
    for (const settings::Value& each : {before, after})
      if (!each.problem.empty()) return Fail(each.problem);
    device.changes.push_back({field, before.text, after.text});
  }

  void CheckDevice() {
    if (!file_.plan.devices.empty() && file_.plan.devices.back().path.empty()) Fail("the device has no path");
  }

  PlanFile file_;
  std::size_t line_ = 0;
};

}  // namespace

std::string PlanText(const Plan& plan) {
  std::string text = std::string(kPlanFirstLine) + kPlanLineEnd + Lines(kPlanRows, plan);
  for (const DevicePlan& device : plan.devices) {
    text += kPlanLineEnd + std::string(kDeviceLine) + kPlanLineEnd + Lines(kDeviceRows, device);
    for (const Change& change : device.changes)
      text += Line(change.field->name(),
                   BeforeText(change) + std::string(kArrow) + TextWithUnit(*change.field, change.after));
    for (const LeftOut& left_out : device.left_out)
      text += Line(kLeftOutKey, text::Quoted(std::string(left_out.field->name()) + ": " + left_out.reason));
    if (device.problem.empty()) text += Line("same", std::to_string(device.same));
  }
  return text;
}

PlanFile ParsePlan(std::string_view text) { return PlanReader().Read(text); }

}  // namespace rollout
