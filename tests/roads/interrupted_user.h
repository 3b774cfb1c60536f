#pragma once

#include <algorithm>
#include <cstring>

#include "headless/forwarding_object.h"
#include "model/catalogue.h"
#include "model/configuration_screen.h"
#include "simulator/client_session.h"
#include "support/user.h"
#include "transfer/review_form.h"

using Texts = std::map<const ui::Control*, std::string>;
using Values = std::map<std::string, simulator::Bytes>;

inline const std::string kFirst =
    std::string(kFirstThermostat) + "/Thermostat";  // an object of the first thermostat
inline const std::string kSilent = "Demo Tower/Demo Tower.Floor 1.West Wing/Thermostat 110";
inline constexpr int kList = -1;

inline std::int32_t TypeOf(const std::string& path) { return path == kFirst ? 28 : 7; }

/// The action of the user or the director on the device on the screen, after these edits.
struct Pass {
  const char* name;
  std::vector<std::pair<int, const char*>> edits;
  std::function<void()> run;
  bool by_director = false, keeps_edits = true;
};

/// The outcome of an interrupted pass for the device on the screen.
enum class Outcome { Untouched, Replaced, Unreadable, Closed, ServerLost, Ended, EndedAfterThePass };
using enum Outcome;
struct Interruption {
  const char* name;
  Outcome outcome;
  std::function<void()> act;
  std::string device = {};
};

/// A user at the first thermostat whose passes are interrupted whenever the process waits: before a call of
/// the object server, at a box, and when the message loop runs.
struct InterruptedUser : World, User {
  struct Result {
    std::vector<std::string> moments;
    int tried_writes = 0, values_after = 0, failures = 0;
    std::string screen;
    Texts typed, texts;
    Values written;
    bool ended = false;
  };
  struct Object : headless::ForwardingObject {
    Object(platform::LateBoundPtr inner, InterruptedUser& owner, int number)
        : ForwardingObject(std::move(inner)), user(owner), server(number) {}
    platform::Value Forward(const platform::Member& member, platform::CallKind kind,
                            platform::Arguments arguments) override {
      const std::string call = std::string(member.name) + (kind == platform::CallKind::Put ? "=" : "");
      user.Moment(call);
      user.now.tried_writes += call == "Value=";
      user.now.values_after += call.starts_with("Value");
      if (server == user.servers_lost) return ForwardingObject::Forward(member, kind, arguments);
      throw platform::Error(static_cast<std::int32_t>(0x800706BAu), "Test", "The RPC server is unavailable.");
    }
    platform::LateBoundPtr Another(platform::LateBoundPtr inner) override {
      return std::make_shared<Object>(std::move(inner), user, server);
    }
    InterruptedUser& user;
    const int server;
  };

  InterruptedUser() : User(static_cast<World&>(*this)) {
    in_between = [this](platform::LateBoundPtr server) {
      return std::make_shared<Object>(std::move(server), *this, servers_lost);
    };
    desktop.on_message = [this](const ui::Message&) { Moment("box"); };
    desktop.on_file_dialog = [this] { Moment("file dialog"); };
    desktop.on_modal = [this](ui::Form& form) {
      Moment("review");
      if (form.Visible()) dynamic_cast<transfer::fReview&>(form).cmdOk.UserClicks();
    };
    desktop.on_yield = [this] {
      Moment("yield " + StatusPanel(3).substr(0, 9) + progress.Status().substr(0, 9));
    };
    Recover();
  }
  void Moment(const std::string& kind) {
    if (!counts) return;
    if (awaited == 0) CheckThatTextsBelongToDeviceAndUnits();
    now.moments.push_back(kind);
    if (now.moments.size() != awaited) return;
    counts = false;
    interruption->act();
    now.values_after = 0;
  }

  /// A call of the director, or of a new one if none is left. Returns its error number, and keeps the last
  /// one, which is the pass's.
  std::int32_t Call(const std::function<void(platform::LateBound&)>& call) {
    if (!api) api = CreateApi();
    const auto held = api;  // an object lives during its calls
    return last_error = ErrorOf([&] { call(*held); }).number();
  }
  std::int32_t OpenNetwork(const std::string& name) {
    return Call([&](auto& object) { Put(object, "networkName", name); });
  }
  std::int32_t Configure(const std::string& path) {
    return Call([&](auto& object) {
      Put(object, "networkName", std::string("Demo Tower"));
      Send(object, 13, TypeOf(path), path);
    });
  }
  void ReleaseTheLastObject() {
    main.Hide();
    api.reset();
  }
  void Exit() {
    desktop.answers.push_front(ui::Answer::Yes);
    main.cmdExit.UserClicks();
  }

  Values& ValuesOf(const char* device) {
    const simulator::stored::DeviceKey key{"Demo Tower", {"Floor 1"}, device};
    return simulator::stored::DeviceOf(simulation->installation(), key).values;
  }
  /// What an undisturbed plug-in shows for the device now; without a path, the initial texts.
  const Texts& TextsOf(const std::string& path) {
    Texts& texts = texts_of[{path, main.DisplayUnits, ValuesOf("Thermostat 101")}];
    if (!texts.empty()) return texts;
    World other;
    other.simulation = simulation;
    other.registry.SetMachineSetting(identity.PlugInKey(), "DisplayUnits", std::to_string(main.DisplayUnits));
    const auto director = path.empty() ? other.CreateApi() : other.Configure(path, TypeOf(path));
    for (const auto& row : model::Catalogue())
      if (const auto* control = main.screen.Find(row.control)) texts[control] = other.Shown(row.control);
    return texts;
  }
  bool AllLocked(bool locked) const {
    return std::ranges::all_of(main.screen.EditableFields(),
                               [=](const ui::Field* field) { return field->Locked() == locked; });
  }
  bool ShowsAllOf(const std::string& path) {
    const auto is_shown = [](const auto& text) {
      return text.first->Text() == text.second && !IsMarked(*text.first);
    };
    return StatusPanel(1) == "Cnfg Online" && StatusPanel(2) == path && AllLocked(false) &&
           std::ranges::all_of(TextsOf(path), is_shown) && !main.cmdApply.Enabled();
  }
  bool IsClosed() const { return StatusPanel(1) == "Closed" && AllLocked(true); }

  void CheckThatTextsBelongToDeviceAndUnits() {
    for (std::size_t units : {0u, 1u})
      EXPECT_EQ(main.obUnits[units].Selected(), units == static_cast<std::size_t>(main.DisplayUnits));
    for (const auto& label : main.screen.txtTempUnits())
      EXPECT_EQ(label->Text(), model::TemperatureUnit(main.DisplayUnits));
    const std::string path = StatusPanel(2), heading = main.lblDeviceTemplate.Text();
    const std::string named = heading.substr(heading.rfind('(') + 1, std::strlen("Thermostat 101"));
    EXPECT_PRED2(Implies, !path.empty(), path.find(named) != std::string::npos) << heading;
    for (const auto& [control, text] : TextsOf(path))
      EXPECT_TRUE(IsMarked(*control) || control->Text() == text || control->Text() == TextsOf("").at(control))
          << control->name() << " shows " << control->Text() << " for " << path << ", which has " << text;
    for (const ui::Field* field : main.screen.EditableFields()) {
      const bool is_marked = IsMarked(*field), may_differ = is_marked || field->Locked();
      EXPECT_PRED2(Implies, is_marked, main.cmdApply.Enabled() && main.cmdCancel.Enabled()) << field->name();
      EXPECT_EQ(field->Text(), may_differ ? field->Text() : TextsOf(path).at(field)) << field->name();
    }
  }
  void CheckThatOnlyAppliedValuesAreWrittenAndAllAreLogged(const Result& undisturbed) {
    for (const auto& [name, bytes] : now.written) EXPECT_EQ(bytes, undisturbed.written.at(name)) << name;
    EXPECT_EQ(ValuesOf("Thermostat 102"), values_of_second);
    std::string device;
    std::vector<std::string> logged, written = Operations(" Value=");
    int failed = 0, reads = 0;
    for (const auto& row : log.lstActivity.Rows()) {
      if (row.cells[1] == "Configuring") device = row.cells[2];
      reads += row.cells[1].find("eading nci") != std::string::npos && !row.cells[2].starts_with(' ');
      if (row.cells[1].find("pdating") == std::string::npos) continue;
      EXPECT_EQ(device, kFirst);
      if (row.icon == ui::ListView::Icon::Red)
        ++failed;
      else
        logged.push_back(row.cells[1].substr(sizeof "Updating") + " Value=" + row.cells[2]);
    }
    std::erase_if(written, [](const std::string& line) { return line.ends_with(" !"); });
    EXPECT_EQ(logged, written);
    EXPECT_GE(reads, std::ranges::count_if(Operations(" Value"), [](const std::string& line) {
                return line.find('=') == std::string::npos;
              }));
    EXPECT_LE(now.tried_writes, static_cast<int>(logged.size()) + failed);
    const bool is_shown = interruption->outcome == Unreadable || interruption->outcome == ServerLost;
    EXPECT_PRED2(Both, failed <= now.failures, now.failures <= failed + undisturbed.failures + is_shown);
  }
  void CheckThatRefreshReadsOrExplains() {
    const bool closed = IsClosed();
    simulation->journal().Clear();
    desktop.messages.clear();
    main.cmdRefresh.UserClicks();
    CheckThatTextsBelongToDeviceAndUnits();
    EXPECT_EQ(closed ? Message().text.find("The network of this device has been closed.") : 0u, 0u)
        << testing::PrintToString(MessageTexts());
    EXPECT_PRED2(Implies, desktop.messages.empty(), Operations("Value").size() == 11 && AllLocked(false));
  }
  void Recover() {
    ValuesOf("Thermostat 101").clear();
    if (std::exchange(desktop.ended, false)) api.reset();
    desktop.messages.clear();
    EXPECT_EQ(Configure(kFirst), 0);
    EXPECT_TRUE(desktop.messages.empty());
    main.Show();
    if (main.DisplayUnits != 0) main.obUnits[0].UserClicks();
    EXPECT_TRUE(ShowsAllOf(kFirst));
    CheckThatTextsBelongToDeviceAndUnits();
  }

  void Walk(const Pass& pass, std::size_t moment) {
    now = {};
    // Each run starts with the same knowledge of the object server.
    if (!known) known = *session.Dialect;
    *session.Dialect = *known;
    for (const auto& [index, text] : pass.edits) index == kList ? Choose(0, text) : Type(index, text);
    for (const ui::Field* field : main.screen.EditableFields())
      if (IsMarked(*field)) now.typed[field] = field->Text();
    simulation->journal().Clear();
    desktop.messages.clear();
    log.Clear();
    awaited = moment;
    counts = true;
    pass.run();
    counts = false;
    simulation->faults().Clear();
    desktop.answers.clear();
    EXPECT_PRED2(Both, !main.Busy(), !progress.Shown());
    EXPECT_EQ(desktop.pointers.back(), ui::Pointer::Default);
    for (const ui::Field* field : main.screen.EditableFields()) {
      now.texts[field] = field->Text();
      now.screen += field->Text() + (IsMarked(*field) ? "*" : "") + (field->Locked() ? "-" : "") + "|";
    }
    now.written = ValuesOf("Thermostat 101");
    now.screen += testing::PrintToString(main.StatusBar.Panels()) + testing::PrintToString(MessageTexts()) +
                  testing::PrintToString(now.written) + main.lblDeviceTemplate.Text();
    for (const auto& shown : desktop.messages) now.failures += shown.message.icon == ui::Icon::Critical;
    now.ended = desktop.ended;
  }
  void Interrupt(const Pass& pass, std::size_t moment, const Result& undisturbed) {
    Walk(pass, moment);
    CheckThatOnlyAppliedValuesAreWrittenAndAllAreLogged(undisturbed);
    const Outcome outcome = interruption->outcome;
    const bool has_next_director = pass.by_director && api;
    EXPECT_PRED2(Implies, !pass.by_director && (outcome == Ended || outcome == Closed),
                 now.values_after <= 1);
    EXPECT_EQ(now.ended,
              outcome == Ended || outcome == EndedAfterThePass || (undisturbed.ended && !has_next_director));
    if (now.ended) {
      EXPECT_PRED2(Implies, !desktop.forms.empty(), desktop.forms == std::vector<ui::Form*>{&log});
      for (const auto& each : simulation->Sessions()) EXPECT_FALSE(each->IsOpen());
      return;
    }
    CheckThatTextsBelongToDeviceAndUnits();
    // The director of the pass, or the next one, may act after the interruption.
    const bool director_acts_later =
        pass.by_director && (last_error != 0 || ShowsAllOf(kFirst) || IsClosed() || StatusPanel(2).empty());
    const bool is_untouched = now.screen == undisturbed.screen;
    EXPECT_PRED2(Implies, outcome == Untouched, is_untouched);
    EXPECT_PRED2(Implies, outcome == Replaced && !director_acts_later, ShowsAllOf(interruption->device));
    EXPECT_PRED2(Implies, outcome == Unreadable && !director_acts_later,
                 StatusPanel(2) == kSilent && now.failures != 0);
    EXPECT_PRED2(Implies, outcome == Closed && !director_acts_later, IsClosed());
    EXPECT_PRED2(Implies, outcome == ServerLost && !is_untouched && !director_acts_later,
                 IsClosed() && now.failures != 0);
    const bool keeps_edits = pass.keeps_edits && outcome != Replaced && outcome != Unreadable;
    for (const auto& [field, text] : now.typed)
      EXPECT_TRUE(!keeps_edits || field->Text() == text || field->Text() == undisturbed.texts.at(field))
          << field->name() << " shows " << field->Text() << " in place of " << text;
    const auto& rows = log.lstActivity.Rows();
    EXPECT_PRED2(Implies, std::exchange(stopped, false),
                 !rows.empty() && rows.back().cells[1] == "Refreshing");
    CheckThatRefreshReadsOrExplains();
  }

  std::optional<lns::Dialect> known;
  const Values values_of_second = ValuesOf("Thermostat 102");
  std::shared_ptr<plugin::LNSPlugInAPI> api;
  std::map<std::tuple<std::string, int, Values>, Texts> texts_of;
  const Interruption* interruption = nullptr;
  Result now;
  std::size_t awaited = 0;
  bool counts = false, stopped = false;
  int servers_lost = 0;
  std::int32_t last_error = 0;
};
