// A user, a director and a failing network act at random, checked by a small model of an observer's
// knowledge: what the device reported, what was typed, and what is marked.
//
//   random_walk [first walk] [how many] [steps of each]
//
// The same number repeats the same walk. A walk that fails ends the program and prints its steps.

#include <cmath>
#include <iostream>
#include <random>
#include <set>
#include <string>

#include "model/catalogue.h"
#include "support/user.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace {

using model::CatalogueRow;
using std::string;
using text::LeadingNumber;

/// One has no power, one is not attached, the last refuses its options.
const string kDevices[] = {kFirstThermostat,
                           "Demo Tower/Demo Tower.Floor 1/Thermostat 102",
                           "Demo Tower/Demo Tower.Floor 1/Thermostat 102/Thermostat",
                           "Demo Tower/Demo Tower.Floor 2/Thermostat 203",
                           "Demo Tower/Demo Tower.Floor 2/Thermostat 204",
                           "Demo Annex/Demo Annex.Ground.Lobby/Thermostat A2"};
const auto kEntries = text::Split(
    "20 20.5 21.74 23 24.96 32 32.0 12 4.5 90 37.5 1 2.5 0 7 -3 99 -0 1:30 1.2.3 5\b\b-7 . - 5- a \b 2x1  "
    "9999999 20.000000000000000000000000000000001",
    " ");

struct Chance {
  std::mt19937 random;
  int Below(std::size_t count) { return static_cast<int>(random() % count); }
  template <class List = std::initializer_list<const char*>>
  auto OneOf(const List& list) {
    return *(std::begin(list) + Below(std::size(list)));
  }
};

/// A random walk: actions at rest and while the plug-in processes messages, and the model to check them.
class Walk : Chance, World, User {
 public:
  explicit Walk(unsigned seed) : Chance{std::mt19937(seed)}, User(static_cast<World&>(*this)) {
    for (int& each : preferences_) each = Below(kActs);
    for (int& each : fields_) each = OneOf(std::array{0, 1, 2, 3, 4, 5, Below(22), Below(2) + 39});
    desktop.on_yield = [this] {
      Listen();
      if (running_ == 1 && Below(12) == 0) Act(Below(2) ? OneOf(preferences_) : Below(kActsOfOthers + 3));
    };
    desktop.on_message = [this](const ui::Message& message) { Answer(message); };
    registry.SetMachineSetting(identity.PlugInKey(), "DisplayUnits", std::to_string(Below(2)));
    api_ = CreateApi();
    if (Below(4)) Put(*api_, "Visible", true);
    Direct("configure", kDevices[0]);
    Put(*api_, "Visible", true);
  }
  ~Walk() { desktop.on_yield = nullptr; }

  /// The steps and the fault; empty if there is none.
  string Go(int steps) {
    for (int step = 1; step <= steps && wrong_.empty(); ++step) {
      story_ += "\n" + std::to_string(step);
      Listen();
      step_ = {};
      step_.said = Said();
      Act(Below(3) ? OneOf(preferences_) : Below(kActs));
      Check();
    }
    return wrong_.empty() ? "" : story_ + "\n" + wrong_;
  }

 private:
  Walk& Tell(const string& what) {
    story_ += (running_ > 1 ? "\n   meanwhile " : " ") + what;
    return *this;
  }
  void Wrong(const string& what) { wrong_ += what + "\n"; }

  // Actions.

  static constexpr int kActs = 30, kActsOfOthers = 7;
  void Act(int what) {
    ++running_;
    Choose(what);
    --running_;
    Listen();
  }
  void Choose(int what) {
    if (what < 1) return Direct("networkName", OneOf({"Demo Tower", "Demo Annex", "Demo Nowhere"}));
    if (what < 3) return Direct(Below(6) ? "configure" : "Remote", OneOf(kDevices));
    if (what < 5) return BreakLine();
    if (what < kActsOfOthers) return WriteElsewhere();
    if (what < 8) return Tell("mend the line").simulation->faults().Clear();
    if (what < 10) return static_cast<void>(Tell("press Escape").main.EscapePressed());
    if (what < 11) return Tell("turn the page").main.screen.tabData.Select(Below(8));
    if (what < 12) return Press(main.cmdCancel, [this] { known_.edits.clear(); });
    if (what < 14) return Press(main.cmdRefresh, [this] { step_.refreshes = true; });
    if (what < 17) return Press(main.obUnits[Below(2)], [this] { step_.switches = !Field(0).Locked(); });
    if (what < 20) return Press(main.cmdApply, [this] { step_.wanted = step_.applied = known_.edits; });
    if (what < 21) return EnterInList();
    if (what < 23) return UseList();
    if (what < 24) return PutBack();
    Type();
  }

  /// The user goes there. False if a message appeared or a rule moved the focus.
  bool Reach(ui::Control& control, const string& to) {
    Tell(to + " " + control.name());
    const ui::Control* const left = Focused();
    const std::size_t messages = desktop.messages.size();
    leaves_ = true;
    GoTo(control);
    leaves_ = false;
    Listen();
    if (const ui::Control* const field = std::exchange(refused_, nullptr); field && IsMarked(*field)) {
      known_.edits[field] = field->Text();
      if (!IsClosed() && kept_ != Kept(field->Text(), true))
        Wrong(field->name() + " did not restore " + kept_.first);
    }
    if (Focused() != left) kept_ = {Focused()->Text(), IsMarked(*Focused())};
    return messages == desktop.messages.size() && Focused() == &control;
  }
  void Edit(ui::Field& field, const string& how, const std::function<void()>& edit) {
    if (!Reach(field, how)) return;
    const string before = field.Text();
    edit();
    if (field.Locked() && field.Text() != before) Wrong(field.name() + " is locked");
    if (field.Locked() || !IsMarked(field)) return;
    known_.edits[&field] = field.Text();
    step_.edited = true;
  }
  void Type() {
    const int index = OneOf(fields_);
    const string how = OneOf({"go", "step", "paste", "type", "type", "type"}), entry = OneOf(kEntries);
    Edit(Field(index), how + " " + entry + " to", [&] {
      if (how == "step") Key(Field(index), 33 + Below(2), Below(3));
      if (how == "paste") Paste(index, entry);
      if (how == "type") User::Type(index, entry);
    });
  }
  void UseList() {
    ui::ChoiceList& list = List(Below(model::kChoiceListCount));
    Edit(list, "use", [&] {
      Below(2) ? Key(list, 40) : list.on_drop_down();
      if (!list.Locked() && Below(3)) list.UserChooses(OneOf(list.Items()));
    });
  }
  void PutBack() {
    ui::Field& field =
        Below(2) ? static_cast<ui::Field&>(Field(OneOf(fields_))) : *OneOf(main.screen.EditableFields());
    if (!Reach(field, "put back") || !field.CanBePutBack()) return;
    field.UserPutsBack();
    known_.edits.erase(&field);
    kept_ = {field.Text(), false};
  }
  template <class Button, class Note>
  void Press(Button& button, Note note_at_rest) {
    if (!button.Enabled() || !Reach(button, "press")) return;
    if (running_ == 1) note_at_rest();
    button.UserClicks();
  }
  void EnterInList() {
    if (!Reach(List(16), "press Enter in")) return;
    if (running_ == 1) step_.wanted = step_.applied = known_.edits;
    Key(List(16), 13);
  }
  void Direct(const string& what, const string& name) {
    Tell("director: " + what + " " + name);
    ErrorOf([&] {
      if (what == "Remote") return Put(*api_, what, Below(2) == 0);
      if (what != "configure" || Below(5)) Put(*api_, "networkName", name.substr(0, name.find('/')));
      if (what == "configure") Send(*api_, 13, name.ends_with("/Thermostat") ? 28 : 7, name);
    });
  }
  void BreakLine() {
    const string item = OneOf({"", "", "nciSetPts", "nciGenOpts", "nciSndHrtBt"});
    const string operation = OneOf({"read", "read", "write", "write", "any"});
    const int first = 1 + Below(operation == "any" ? 80 : 12);
    const int last = first + Below(3), code = OneOf(std::array{18200, 18034, 18035, 17008});
    Tell("break " + operation + " " + std::to_string(first) + " to " + std::to_string(last) + " of " + item);
    for (int i = first; i <= last; ++i) simulation->faults().Add({"", item, operation, i, code});
  }
  void WriteElsewhere() {
    Tell("another tool writes");
    for (auto& device : simulation->installation().networks[0].system.subsystems[0].devices) {
      const auto any = static_cast<std::uint8_t>(Below(256));
      device.values["nciSetPts"] = {8, 252, 9, 196, 10, 240, 7, any, 7, 108, 6, 64};
      device.values["nciSndHrtBt"] = {0, any};
    }
  }

  void Answer(const ui::Message& message) {
    Listen();
    const auto says = [&](const char* words) { return message.text.find(words) != string::npos; };
    const bool agrees = Below(3) != 0, yes_no = message.buttons == ui::Buttons::YesNo;
    story_ += "\n   box \"" + message.text.substr(0, message.text.find('\r')) + (agrees ? "\" yes" : "\" no");
    const bool failure = message.icon == ui::Icon::Critical;
    // A failed switch of units has read some points in the previous units, which are in force again.
    if (failure && step_.switches && !step_.complete) TakeRead(step_.failures == 1);
    step_.explained = step_.explained || failure || says("network tool") || says("must be numerical");
    step_.edited = step_.edited || leaves_;
    if (leaves_ && says("must be numerical")) known_.edits.erase(refused_ = Focused());
    for (const int i : {0, 1, 3, 4})
      if (says("not respected") && IsMarked(Field(i))) known_.edits[&Field(i)] = Field(i).Text();
    if (running_ == 1 && Below(6) == 0) Act(Below(kActsOfOthers));
    if (says("discard all changes") && agrees && !IsClosed()) known_.edits.clear();
    desktop.answers = {static_cast<ui::Answer>(2 * yes_no + !agrees)};  // of Ok, Cancel, Yes, No
  }

  // The observer's knowledge.

  /// 0 for SI, 1 for US, by caption or format; -1 for a format without units.
  int Caption() const { return main.screen.txtTempUnits()[0]->Text() == "\u00BAF"; }
  static int UnitsOf(const string& format) {
    return format.find("#US") != string::npos ? 1 : format.find("#SI") != string::npos ? 0 : -1;
  }
  std::size_t Said() const { return desktop.messages.size() + log.lstActivity.Rows().size(); }
  bool IsClosed() const { return StatusPanel(1) == "Closed"; }
  /// The number of an entry, clamped to the field's limits.
  double Entered(const CatalogueRow& row, const string& text) const {
    const auto& [si_min, si_max, us_min, us_max] = *row.limits;
    return std::clamp(LeadingNumber(text), Caption() ? us_min : si_min, Caption() ? us_max : si_max);
  }

  void Listen() {
    simulator::Journal& journal = simulation->journal();
    for (std::size_t i = 0; i < journal.Count(); ++i) Hear(journal.At(i));
    journal.Clear();
    if (!StatusPanel(2).empty()) return;
    known_ = {};  // another device takes over the screen
    step_ = {};
    refused_ = nullptr;
  }
  void Hear(const simulator::JournalEntry& entry) {
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
  void TakeRead(bool all) {
    step_.complete = all;
    for (const int units : {-1, Caption()})
      for (const auto& [point, values] : step_.read[units + 1]) known_.reported[point] = values;
    known_.reported_in = Caption();
    known_.applied.clear();
  }
  void HearWrite(const simulator::JournalEntry& entry, const std::vector<string>& values) {
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
  static bool IsNear(const CatalogueRow& row, const string& value, double number) {
    return std::abs(LeadingNumber(value) - number) < (row.offset_value ? 0.0501 : 1e-9);
  }

  void Check() {
    for (const CatalogueRow& row : model::Catalogue())
      if (const ui::Control* const field = main.screen.Find(row.control)) CheckField(row, *field);
    if (!step_.wanted.empty() && !step_.write_failed && !step_.explained && !IsClosed()) Wrong("not written");
    if (step_.refreshes && Said() == step_.said && !IsClosed()) Wrong("nothing is read or said");
    if (!known_.edits.empty() && !(main.cmdApply.Enabled() && main.cmdCancel.Enabled())) Wrong("no buttons");
    if (progress.Shown() || main.Busy() || desktop.pointers.back() != ui::Pointer::Default) Wrong("busy");
    if (Focused() && !IsMarked(*Focused())) kept_ = {Focused()->Text(), false};
  }
  void CheckField(const CatalogueRow& row, const ui::Control& field) {
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
  /// Applied texts stay as typed until the next reading.
  bool Shows(const CatalogueRow& row, const ui::Control& field) {
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

  std::array<int, 10> preferences_;  // each walk has its own preferences
  std::array<int, 8> fields_;
  std::shared_ptr<plugin::LNSPlugInAPI> api_;
  string story_, wrong_;
  using Kept = std::pair<string, bool>;  // text and mark when the field got the focus
  Kept kept_;
  int running_ = 0;
  bool leaves_ = false;
  ui::Control* refused_ = nullptr;
  std::map<string, string> format_;  // by the variable's path
  using Values = std::map<string, std::vector<string>>;
  using Texts = std::map<const ui::Control*, string>;
  struct {
    Values reported;  // by point, from the last complete reading or later writes
    int reported_in = 0;
    Texts edits;
    std::set<const ui::Control*> applied;
  } known_;
  struct {
    std::array<Values, 3> read;  // in no units, SI and US
    Texts wanted, applied;
    int failures = 0;
    std::size_t said = 0;
    bool edited = false, switches = false, refreshes = false, complete = false, write_failed = false,
         explained = false;
  } step_;
};

}  // namespace

int main(int count_of_words, char** words) {
  const auto number = [&](int word, unsigned otherwise) {
    return word < count_of_words ? static_cast<unsigned>(std::stoul(words[word])) : otherwise;
  };
  const unsigned first = number(1, 1), count = number(2, 200), steps = number(3, 60);
  for (unsigned seed = first; seed != first + count; ++seed) {
    const string wrong = Walk(seed).Go(steps);
    if (wrong.empty()) continue;
    std::cout << "walk " << seed << ":" << wrong;
    return 1;
  }
  std::cout << count << " walks of " << steps << " steps: no edit lost, nothing wrong shown or written\n";
  return 0;
}
