// A user, a director and a failing network act at random while an observer checks the screen and the writes.
//
//   random_walk [first walk] [how many] [steps of each]
//
// The same number repeats the same walk. A walk that fails ends the program and prints its steps.

#include <iostream>
#include <random>
#include <string>

#include "observer.h"
#include "text/strings.h"
#include "transfer/review_form.h"

namespace {

using std::string;

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

/// A random walk: actions at rest and while the plug-in processes messages, checked by an observer.
class Walk : Chance, Observer {
 public:
  explicit Walk(unsigned seed) : Chance{std::mt19937(seed)} {
    for (int& each : preferences_) each = Below(kActs);
    for (int& each : fields_) each = OneOf(std::array{0, 1, 2, 3, 4, 5, Below(22), Below(2) + 39});
    desktop.on_yield = [this] {
      Listen();
      if (running_ == 1 && Below(12) == 0) Act(Below(2) ? OneOf(preferences_) : Below(kActsOfOthers + 3));
    };
    desktop.on_message = [this](const ui::Message& message) { Answer(message); };
    desktop.on_modal = [this](ui::Form& form) { Review(form); };
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

  // Actions.

  static constexpr int kActs = 33, kActsOfOthers = 7;
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
    if (what < 25) return Save();
    if (what < 27) return Load();
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
  void UseSettings(std::size_t item) {
    desktop.from_menu = item;
    Press(main.cmdSettings, [] {});
  }
  void Save() {
    desktop.save_path = "C:\\saved.qm5r";
    files.Write(*desktop.save_path, "before");
    UseSettings(0);
    const string saved = files.ReadStart(*desktop.save_path, 1 << 20);
    if (saved != "before" && settings::ParseSettings(saved).HasErrors()) Wrong("wrote " + saved);
  }
  void Load() {
    string text = "QM5R settings 1.0\nprogram ID = 8000D3550004041D\n[settings]\n";
    for (const char* line :
         {"nciSetPts.occ_heat = 24", "nciSetPts.occ_cool = 26.13", "nciSetPts.unocc_heat = 12.5",
          "HeatMax = 19", "CoolMin = 25", "nciSndHrtBt = 90", "FanMode = HIGH"})
      if (const settings::Field* field = settings::FindField(string(line).substr(0, string(line).find(' ')));
          field && Below(2))
        text += string(line) + ' ' + string(settings::UnitName(field->unit())) + '\n';
    desktop.open_path = "C:\\load.qm5r";
    files.Write(*desktop.open_path, text);
    UseSettings(1);
    for (const auto& [row, wanted] : std::exchange(ticked_, {}))
      if (ui::Control* field = main.screen.Find(row->control); IsMarked(*field))
        known_.edits[field] = field->Text();
  }
  /// The user unticks some fields and accepts or not; something may come in between.
  void Review(ui::Form& form) {
    auto& review = dynamic_cast<transfer::fReview&>(form);
    for (std::size_t row = 0; row < review.lstFields.Rows().size(); ++row)
      if (Below(4) == 0) review.lstFields.UserTicks(row, Below(2) == 0);
    if (running_ == 1 && Below(4) == 0) Act(Below(kActsOfOthers));
    if (!form.Visible() || !Below(4) || !review.cmdOk.Enabled()) return;
    ticked_ = review.Ticked();
    step_.edited = true;
    review.cmdOk.UserClicks();
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

  std::array<int, 10> preferences_;  // each walk has its own preferences
  std::array<int, 8> fields_;
  std::vector<editing::FieldEditing::Entry> ticked_;
  std::shared_ptr<plugin::LNSPlugInAPI> api_;
  string story_;
  int running_ = 0;
  bool leaves_ = false;
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
