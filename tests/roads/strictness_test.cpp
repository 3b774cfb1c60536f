#include "headless/forwarding_object.h"
#include "registration/registration_world.h"
#include "support/user.h"

namespace {

using platform::Arguments;
using platform::CallKind;
using platform::LateBoundPtr;
using platform::Value;

/// Changes a call to undo the program's adaptation to its object server.
using Undo = void (*)(std::string& member, CallKind kind, Value& value);

class Undoing : public headless::ForwardingObject {
 public:
  Undoing(LateBoundPtr inner, Undo undo) : ForwardingObject(std::move(inner)), undo_(undo) {}

 private:
  Value Forward(const platform::Member& member, CallKind kind, Arguments arguments) override {
    std::vector<Value> changed(arguments.begin(), arguments.end());
    if (changed.empty()) changed.emplace_back();
    std::string name(member.name);
    undo_(name, kind, changed[0]);
    if (name.empty()) return {};
    return inner()->Invoke({name, name == member.name ? member.number : platform::Member::kNoNumber}, kind,
                           Arguments(changed).first(arguments.size()));
  }
  LateBoundPtr Another(LateBoundPtr inner) override { return std::make_shared<Undoing>(inner, undo_); }

  Undo undo_;
};

void ReplaceAll(Value& value, char from, char to) {
  std::ranges::replace(std::get<std::string>(value), from, to);
}

bool Configures(World& world, const char* interface_name) {
  const auto api = world.CreateApi();
  if (*interface_name) World::Put(*api, "Remote", true);
  World::Put(*api, "NetworkInterfaceName", std::string(interface_name));
  const bool opened = ErrorOf([&] {
                        World::Put(*api, "networkName", std::string("Demo Annex"));
                        World::Send(*api, 13, 7, "Demo Annex/Demo Annex.Ground.Lobby/Thermostat A1");
                      }).number() == 0;
  if (!opened || !world.desktop.messages.empty()) return false;
  User user(world);
  user.Enter(0, "20.5");
  user.Press(world.main.cmdApply);
  return world.desktop.messages.empty() && world.Operations(" Value=").size() == 1 &&
         !world.Operations(" Value=")[0].ends_with("!");
}

TEST(Strictness, EachAdaptationIsNeeded) {
  static bool asked = false;
  struct Case {
    const char* answer;
    void (*demand)(simulator::Strictness&);
    const char* interface_name;
    Undo undo;
  };
  const Case cases[] = {
      {"no access option: the variable is used without it",
       [](auto& strict) { strict.missing = {"SourceOptions"}; }, "",
       [](std::string& member, CallKind, Value&) {
         asked = asked || member == "SourceOptions";
         if (asked && member == "Value") member = "SourceOptions";
       }},
      {"formats: the documented forms are tried", [](auto& strict) { strict.formats = true; }, "",
       [](std::string& member, CallKind kind, Value& value) {
         if (member != "DsFormatType" || kind != CallKind::Put) return;
         std::string& name = std::get<std::string>(value);
         if (name.ends_with("#SI")) name = "#SI" + name.substr(0, name.size() - 3);
       }},
      {"regional settings: values are written with the separators that they were read with",
       [](auto& strict) { strict.regional = true; }, "",
       [](std::string& member, CallKind kind, Value& value) {
         if (member == "Value" && kind == CallKind::Put)
           ReplaceAll(value, ',', '.'), ReplaceAll(value, ';', ',');
       }},
      {"pausing: the data server runs again before values are read",
       [](auto& strict) { strict.pausing = true; }, "Internet",
       [](std::string& member, CallKind, Value& value) {
         if (member == "DsPause" && value == Value(false)) member.clear();
       }},
      {"no RemoteNetworkInterfaces: all interfaces are searched",
       [](auto& strict) { strict.missing = {"RemoteNetworkInterfaces"}; }, "DEMO-REMOTE-1",
       [](std::string& member, CallKind, Value&) {
         if (member == "NetworkInterfaces") member = "RemoteNetworkInterfaces";
       }},
  };
  for (const Case& c : cases)
    for (const bool undone : {false, true}) {
      World world;
      asked = false;
      simulator::stored::Installation& installation = world.simulation->installation();
      simulator::stored::NetworkOf(installation, "Demo Annex").remote_interfaces = {"DEMO-REMOTE-1"};
      installation.strict = {};
      c.demand(installation.strict);
      if (undone)
        world.in_between = [&](LateBoundPtr server) { return std::make_shared<Undoing>(server, c.undo); };
      EXPECT_EQ(Configures(world, c.interface_name), !undone) << c.answer << (undone ? ", undone" : "");
      if (undone) std::cout << "without \"" << c.answer << "\" configuring fails\n";
    }
}

TEST(Strictness, LogsTheServersDemandsEvenIfTheFirstReadFails) {
  World world;
  world.simulation->installation().strict = {};
  world.simulation->installation().strict.formats = true;
  world.simulation->faults().Add({"", "nciMinVer", "read", 1, 18200});
  world.Configure(kFirstThermostat);
  EXPECT_EQ(std::ranges::count(world.log.lstActivity.Rows(), "Object server",
                               [](const auto& row) { return row.cells[1]; }),
            1);
}

/// An older mark whose version only the object server sets.
TEST(Strictness, ReplacesAMarkWithAReadOnlyVersion) {
  for (const bool undone : {false, true}) {
    RegistrationWorld world;
    world.simulation->installation().strict.read_only = {"VersionNumber"};
    if (undone)
      world.in_between = [](LateBoundPtr server) {
        return std::make_shared<Undoing>(server, [](std::string& member, CallKind, Value&) {
          if (member == "Remove") member.clear();
        });
      };
    const auto api = world.CreateApi();
    World::Put(*api, "networkName", std::string("Demo Islands"));
    World::Send(*api, 50, 0, "");
    auto& marks = simulator::stored::NetworkOf(world.simulation->installation(), "Demo Islands").system;
    marks.component_apps.back().version = "1.0";
    ErrorOf([&] { World::Send(*api, 50, 0, ""); });
    EXPECT_EQ(marks.component_apps.back().version == "1.2.3", !undone);
    if (undone) std::cout << "without adding a command again registration fails\n";
  }
  std::cout << "the COM adapter delivers the events of other threads: see the tests of the control\n"
               "needs no adaptation: coarse, database, demonstration, release 3.0\n";
}

}  // namespace
