#include "observer.h"

#include <cmath>

#include "text/numbers.h"
#include "text/strings.h"

using model::CatalogueRow;
using std::string;
using text::LeadingNumber;

namespace {

/// 0 for SI, 1 for US; -1 for a format without units.
int UnitsOf(const string& format) {
  return format.find("#US") != string::npos ? 1 : format.find("#SI") != string::npos ? 0 : -1;
}

bool IsNear(const CatalogueRow& row, const string& value, double number) {
  return std::abs(LeadingNumber(value) - number) < (row.offset_value ? 0.0501 : 1e-9);
}

}  // namespace

double Observer::Entered(const CatalogueRow& row, const string& text) const {
  const auto& [si_min, si_max, us_min, us_max] = *row.limits;
  return std::clamp(LeadingNumber(text), Caption() ? us_min : si_min, Caption() ? us_max : si_max);
}

void Observer::Listen() {
  simulator::Journal& journal = simulation->journal();
  for (std::size_t i = 0; i < journal.Count(); ++i) Hear(journal.At(i));
  journal.Clear();
  if (!StatusPanel(2).empty()) return;
  known_ = {};  // another device takes over the screen
  step_ = {};
  refused_ = nullptr;
}

void Observer::Hear(const simulator::JournalEntry& entry) {
  const auto& [operation, result, error] = entry;
  const auto& [path, device, item] = operation.place;
  const bool put = operation.kind == simulator::OperationKind::Put;
  step_.failures += error != 0;
  if (put && error == 0 && operation.member == "DsFormatType") format_[path] = operation.value;
  if (operation.member != "Value") return;
  const bool on_screen = !device.empty() && StatusPanel(2).starts_with(device);
  if (put && !on_screen) Wrong("not on the screen: " + entry.Text());
  if (!on_screen) return;  // it began before another device took over the screen
  const int units = UnitsOf(format_[path]);
  const auto values = text::Split(put ? operation.value : result, item == "nciSetPts" ? "," : " ");
  if (put && units == !Caption()) Wrong("in other units: " + entry.Text());
  if (put) return HearWrite(entry, values);
  if (error != 0) return;
  auto& read = step_.read;
  read[units + 1][format_[path] == "RAW" ? item + "Raw" : item] = values;
  if (read[0].size() + read[1 + Caption()].size() == 11) TakeRead(true);
}

void Observer::TakeRead(bool all) {
  step_.complete = all;
  for (const int units : {-1, Caption()})
    for (const auto& [point, values] : step_.read[units + 1]) known_.reported[point] = values;
  known_.reported_in = Caption();
  known_.applied.clear();
}

void Observer::HearWrite(const simulator::JournalEntry& entry, const std::vector<string>& values) {
  const string& point = entry.operation.place.item;
  std::vector<string>& reported = known_.reported[point];
  bool right = !step_.write_failed && values.size() == reported.size(), wanted = false;
  step_.write_failed = entry.error != 0;
  for (const CatalogueRow& row : model::Catalogue()) {
    if (row.point != point || !right) continue;
    const ui::Control* const field = main.screen.Find(row.control);
    const auto wish = step_.wanted.extract(field);
    const string& value = values[row.index];
    right = !wish         ? value == reported[row.index]
            : !row.limits ? value == wish.mapped()
                          : IsNear(row, value, Entered(row, wish.mapped()));
    wanted = wanted || wish;
    if (!wish || step_.write_failed) continue;
    if (IsMarked(*field) && !step_.edited) Wrong(field->name() + " was written and is still marked");
    if (!IsMarked(*field)) known_.edits.erase(field);
    known_.applied.insert(field);
  }
  if (!right || !wanted) Wrong("not wanted: " + entry.Text());
  if (!step_.write_failed) reported = values;
}

void Observer::Check() {
  for (const CatalogueRow& row : model::Catalogue())
    if (const ui::Control* const field = main.screen.Find(row.control)) CheckField(row, *field);
  if (!step_.wanted.empty() && !step_.write_failed && !step_.explained && !IsClosed()) Wrong("not written");
  if (step_.refreshes && Said() == step_.said && !IsClosed()) Wrong("nothing is read or said");
  if (!known_.edits.empty() && !(main.cmdApply.Enabled() && main.cmdCancel.Enabled())) Wrong("no buttons");
  if (progress.Shown() || main.Busy() || desktop.pointers.back() != ui::Pointer::Default) Wrong("busy");
  if (Focused() && !IsMarked(*Focused())) kept_ = {Focused()->Text(), false};
}

void Observer::CheckField(const CatalogueRow& row, const ui::Control& field) {
  const string& text = field.Text();
  const auto wrong = [&](const string& how) { Wrong(field.name() + " \"" + text + "\" " + how); };
  const auto edit = known_.edits.find(&field);
  if (IsMarked(field) != (edit != known_.edits.end())) return wrong("has a wrong mark");
  if (IsMarked(field)) {
    const string former = std::exchange(edit->second, text);
    const bool clamped =
        step_.applied.contains(&field) && row.limits && LeadingNumber(text) == Entered(row, former);
    if (text != former && !clamped) wrong("was " + former);
  } else if (text.empty() || text == "Undefined model" || text == "HVT_UNKNOWN") {
    if (step_.complete && !IsClosed()) wrong("shows nothing");
  } else if (!Shows(row, field)) {
    wrong("is not what the device reported");
  }
}

bool Observer::Shows(const CatalogueRow& row, const ui::Control& field) {
  const auto& reported = known_.reported[string(row.point)];
  const bool has_units = row.limits && row.limits->si_max != row.limits->us_max;
  if (reported.empty() || (has_units && known_.reported_in != Caption())) return false;
  const string& value = reported[row.index];
  if (row.round_step == 0 && !row.limits) return field.Text() == value;
  const double number = LeadingNumber(value), step = row.round_step;
  const double shown = step == 0 ? number : std::nearbyint(number / step) * step;
  if (known_.applied.contains(&field) && IsNear(row, field.Text(), number)) return true;
  return text::IsNumeric(field.Text()) && std::abs(LeadingNumber(field.Text()) - shown) < 1e-9;
}
