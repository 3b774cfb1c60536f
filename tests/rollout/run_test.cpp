#include "rollout/run.h"

#include "../qm5r/user.h"
#include "headless/faults.h"
#include "simulator/client_session.h"

namespace {

using platform::ObjectServerError;
using simulator::Bytes;

constexpr const char* kPlan = "C:\\all.qm5rplan";

/// A user with a plan for the first floor that changes two variables of Thermostat 101 and 102.
struct Planned : CommandUser {
  Planned() {
    files.Write("s.qm5r",
                "QM5R settings 1.0\nprogram ID = 8000D3550004041D\n[settings]\nHeatMax = 30 C\n"
                "nciSetPts.occ_heat = 20 C\n");
    EXPECT_EQ(Run({"plan", "s.qm5r", "--to", "Demo Tower/Demo Tower.Floor 1/*", "-o", kPlan}), 0);
    before = Values();
    EXPECT_TRUE(Operations(" Value=").empty()) << "planning writes nothing";
    simulation->journal().Clear();
  }
  std::map<std::string, Bytes> Values() { return Device("Floor 1", "Thermostat 101").values; }
  std::string StateOf(const std::string& device) const {
    const auto json = Json();
    for (const auto& each : json["devices"])
      if (each["path"].get<std::string>().ends_with(device)) return each["state"];
    return {};
  }
  /// The records of all runs, one after the other.
  std::string Records() const {
    std::string all;
    const auto folder = files.ReadFolder("C:\\records");
    for (const auto& entry : folder ? folder->entries : std::vector<platform::Files::Entry>())
      all += File("C:\\records\\" + entry.name);
    return all;
  }
  std::map<std::string, Bytes> before;
};

/// An object server whose devices answer, but store something else.
struct Liar : headless::ForwardingObject {
  Liar(platform::LateBoundPtr inner, std::string& text) : ForwardingObject(std::move(inner)), stores(text) {}
  platform::Value Forward(const platform::Member& member, platform::CallKind kind,
                          platform::Arguments arguments) override {
    const bool is_write = member.name == "Value" && kind == platform::CallKind::Put;
    const auto* text = is_write ? std::get_if<std::string>(&arguments[0]) : nullptr;
    if (!text || text->find(',') == std::string::npos)
      return ForwardingObject::Forward(member, kind, arguments);
    if (stores.empty()) return {};
    const platform::Value other = stores;
    return ForwardingObject::Forward(member, kind, {&other, 1});
  }
  platform::LateBoundPtr Another(platform::LateBoundPtr inner) override {
    return std::make_shared<Liar>(std::move(inner), stores);
  }
  std::string& stores;
};

TEST(Run, EndsEachDeviceInItsState) {
  const auto fault = [](const char* item, const char* operation, int first, int last, int code) {
    return [=](Planned& user) {
      for (int i = first; i <= last; ++i)
        user.simulation->faults().Add({"Thermostat 101", item, operation, i, code});
    };
  };
  struct Case {
    const char* name;
    std::function<void(Planned&)> happens;
    const char* state;
  };
  std::string stores;
  const auto lie = [&](std::string text) {
    return [&, text](Planned& user) {
      stores = text;
      user.in_between = [&](platform::LateBoundPtr server) {
        return std::make_shared<Liar>(std::move(server), stores);
      };
    };
  };
  const Case cases[] = {
      {"nothing", [](Planned&) {}, "verified"},
      {"silent", fault("", "read", 0, 0, 18200), "unreachable"},
      {"silent once", fault("", "read", 1, 1, 18200), "verified"},
      {"refuses", fault("", "write", 0, 0, 18034), "refused"},
      {"refuses once", fault("", "write", 1, 1, 18034), "verified"},
      {"refuses the second variable", fault("nciGenOpts", "write", 0, 0, 18034), "partial"},
      {"vanishes after the write", fault("nciSetPts", "read", 2, 9, 18200), "unknown"},
      {"vanishes for a moment", fault("nciSetPts", "read", 2, 2, 18200), "verified"},
      {"silently keeps its value", lie(""), "refused"},
      {"stores another value", lie("23,25,28,20.5,19,16"), "refused"},
      {"is another device",
       [](Planned& user) { user.Device("Floor 1", "Thermostat 101").neuron_id = "00DE000000FF"; },
       "unreachable"},
      {"changed meanwhile",
       [](Planned& user) {
         user.Device("Floor 1", "Thermostat 101").values["nciSetPts"] = {8, 252, 9, 196, 10, 240,
                                                                         7, 0,   7, 108, 6,  64};
       },
       "changed meanwhile"},
      {"has it already",
       [](Planned& user) {
         user.Device("Floor 1", "Thermostat 101").values["nciSetPts"] = {8, 252, 9, 196, 10, 240,
                                                                         7, 208, 7, 108, 6,  64};
       },
       "verified"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Planned user;
    c.happens(user);
    const int code = user.Run({"apply", kPlan, "--yes", "--json"});
    EXPECT_EQ(user.StateOf("101"), c.state) << user.out.str();
    EXPECT_EQ(code, c.state == std::string("verified") ? 0 : 4);
    const auto record = rollout::ParseRecord(user.Records());
    EXPECT_TRUE(record.findings.empty() && !record.is_torn);
    EXPECT_EQ(record.events.back().kind, rollout::Event::Kind::Device);
    // What failed can be done later, and what is done is not done twice.
    user.simulation->faults().Clear();
    user.in_between = nullptr;
    user.Run({"apply", kPlan, "--yes", "--json"});
    user.simulation->journal().Clear();
    user.Run({"apply", kPlan, "--yes", "--json"});
    EXPECT_TRUE(user.Operations(" Value=").empty());
  }
}

TEST(Run, StopsAsAsked) {
  Planned user;
  int asked = 0;
  user.is_stopped = [&] { return ++asked > 2; };
  EXPECT_EQ(user.Run({"apply", kPlan, "--yes", "--json"}), 4);
  EXPECT_EQ(user.Operations(" Value=").size(), 1u) << "ends after the present variable";
  EXPECT_EQ(user.StateOf("101"), "partial");
  EXPECT_EQ(user.StateOf("102"), "not tried");

  for (const char* option : {"--canary", "--stop-after"}) {
    Planned other;
    other.simulation->faults().Add({"Thermostat 101", "", "write", 0, 18035});
    EXPECT_EQ(other.Run({"apply", kPlan, "--yes", "--json", option, "1"}), 4);
    // The first device is settled at the end only, because it gets another try.
    EXPECT_EQ(other.StateOf("101"), "refused") << option;
  }
  for (const auto& [answer, code] : std::initializer_list<std::pair<std::optional<std::string>, int>>{
           {std::nullopt, 2}, {"no", 4}, {"Yes", 0}}) {
    Planned other;
    other.answer = answer;
    EXPECT_EQ(other.Run({"apply", kPlan}), code);
    EXPECT_EQ(other.Operations(" Value=").empty(), code != 0);
  }
  Planned full;
  full.files.fails_to_append = [n = 0]() mutable { return ++n == 2; };
  EXPECT_EQ(full.Run({"apply", kPlan, "--yes"}), 2);
  EXPECT_EQ(full.errors.str(),
            "qm5r: error 112 (Windows): C:\\records\\2026-11-23T10-15-00Z Demo Tower.qm5rrecord: There is "
            "not enough "
            "space on the disk.\n");
  EXPECT_TRUE(full.Operations(" Value=").empty()) << "nothing is sent that is not recorded";
}

TEST(Run, NeverSaysVerifiedOfWhatIsNot) {
  using enum headless::Failure::Reach;
  constexpr headless::Failure kFailures[] = {
      {"does not communicate", ObjectServerError(18200)},
      {"refuses", ObjectServerError(18035)},
      {"loses the answer", ObjectServerError(18200), Operations, 1, true},
      {"fails three times", ObjectServerError(17008), Operations, 3},
      {"is lost", static_cast<std::int32_t>(0x800706BAu), Server}};
  Planned user;
  headless::Faults faults(user);
  user.Run({"plan", "s.qm5r", "--to", kFirstThermostat, "-o", kPlan, "--force"});
  user.Run({"apply", kPlan, "--yes", "--json"});
  const auto after = user.Values();
  std::size_t operations = 0, walked = 0;
  for (const headless::Failure& failure : kFailures) {
    for (std::size_t first = 0; first <= operations; ++first, ++walked) {
      SCOPED_TRACE(testing::Message() << failure.name << ' ' << first);
      user.Device("Floor 1", "Thermostat 101").values = user.before;
      user.simulation->journal().Clear();
      faults.Begin(failure, first);
      const std::string records = "C:\\" + std::to_string(walked);
      const int code = user.Run({"apply", kPlan, "--yes", "--json", "--records", records});
      faults.End();
      if (first == 0) operations = faults.seen();
      const std::string state = user.out.str().empty() ? "" : user.StateOf("101");
      const auto values = user.Values();
      EXPECT_PRED2(Implies, state == "verified" || code == 0, values == after);
      for (const auto& [variable, bytes] : values)
        EXPECT_TRUE(bytes == after.at(variable) ||
                    (user.before.contains(variable) && bytes == user.before.at(variable)));
      EXPECT_PRED2(Implies, state == "unreachable" || state == "not tried", values == user.before);
      faults.Forget();
      EXPECT_EQ(user.Run({"apply", kPlan, "--yes", "--json", "--records", records}), 0);
      EXPECT_EQ(user.Values(), after);
      for (const auto& session : user.simulation->Sessions()) EXPECT_FALSE(session->IsOpen());
      if (HasFailure()) FAIL() << user.errors.str();
    }
  }
  RecordProperty("faults_walked", static_cast<int>(walked));
  std::cout << walked << " faults walked\n";
}

TEST(Run, WhatWasBrokenOffIsResumedFromItsRecord) {
  Planned undisturbed;
  undisturbed.Run({"apply", kPlan, "--yes"});
  const auto record = "C:\\records\\2026-11-23T10-15-00Z Demo Tower.qm5rrecord";
  for (int stop = 1;; ++stop) {
    Planned user;
    int appended = 0;
    user.files.fails_to_append = [&] { return ++appended >= stop; };
    const int code = user.Run({"apply", kPlan, "--yes"});
    user.files.fails_to_append = nullptr;
    std::size_t recorded = 0;
    for (const auto& event : rollout::ParseRecord(user.File(record)).events)
      recorded += event.kind == rollout::Event::Kind::Write;
    EXPECT_GE(recorded, user.Operations(" Value=").size());
    user.Run({stop == 1 ? "apply" : "resume", stop == 1 ? kPlan : record, "--yes"});
    for (const char* name : {"Thermostat 101", "Thermostat 102"})
      EXPECT_EQ(user.Device("Floor 1", name).values, undisturbed.Device("Floor 1", name).values) << stop;
    EXPECT_EQ(user.Operations(" Value=").size(), undisturbed.Operations(" Value=").size()) << "nothing twice";
    if (code == 0) break;
    ASSERT_LT(stop, 100);
  }
}

TEST(Run, UndoingPutsBackWhatNobodyChangedSince) {
  Planned user;
  const auto second = user.Device("Floor 1", "Thermostat 102").values;
  user.Run({"apply", kPlan, "--yes"});
  const std::string records = "C:\\records\\2026-11-23T10-15-00Z Demo Tower";
  auto& edited = user.Device("Floor 1", "Thermostat 101").values["nciSetPts"];
  edited[1] = 0;
  const auto left = user.Values();
  EXPECT_EQ(user.Run({"undo", records + ".qm5rrecord", "--yes"}), 4);
  EXPECT_EQ(
      user.out.str(),
      std::string(kFirstThermostat) +
          "\n  changed meanwhile       nciSetPts is 20.48,25,28,20,19,16, neither 23,25,28,20,19,16 nor "
          "23,25,28,21,19,16\n2 devices: 1 verified, 1 changed meanwhile\nrecord: " +
          records + " 2.qm5rrecord\n");
  EXPECT_EQ(user.Values(), left);
  EXPECT_EQ(user.Device("Floor 1", "Thermostat 102").values.at("nciSetPts"), second.at("nciSetPts"));
  // An undone run is undone in turn.
  EXPECT_EQ(user.Run({"undo", records + " 2.qm5rrecord", "*102", "--yes"}), 0);
  EXPECT_EQ(user.Run({"apply", kPlan, "--yes", "--json"}), 0);
  EXPECT_EQ(user.StateOf("102"), "same");
  EXPECT_EQ(user.Run({"history", "*102"}), 0);
  EXPECT_NE(user.out.str().find("  me@here  undo "), std::string::npos);
  EXPECT_NE(user.out.str().find("24,26,29.5,20.5,18,15 -> 24,26,29.5,20,18,15\n"), std::string::npos)
      << user.out.str();
  user.files.Write(records + ".qm5rrecord", "QM5R record 1.0\r\nwrite\tx\t0\r\nx");
  EXPECT_EQ(user.Run({"undo", records + ".qm5rrecord", "--yes"}), 2);
  EXPECT_EQ(user.errors.str(), records + ".qm5rrecord:2: the checksum does not fit\nqm5r: " + records +
                                   ".qm5rrecord has errors\n");
}

}  // namespace
