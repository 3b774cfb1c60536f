#include "rollout/plan.h"

#include <gtest/gtest.h>

#include "rollout/record.h"
#include "startup/identity.h"

namespace {

using settings::FindField;
using Values = std::vector<std::pair<const char*, const char*>>;

settings::DeviceSettings With(const Values& values, const char* neuron_id) {
  settings::DeviceSettings settings;
  settings.origin.neuron_id = neuron_id;
  for (const auto& [name, text] : values) settings.TextOf(*FindField(name)) = text;
  return settings;
}

std::string TextOf(const rollout::DevicePlan& plan) {
  std::string text;
  for (const auto& change : plan.changes)
    text += std::string(change.field->name()) + " " + change.before + ">" + change.after + "; ";
  for (const auto& left_out : plan.left_out)
    text += std::string(left_out.field->name()) + ": " + left_out.reason + "; ";
  return text + plan.problem;
}

TEST(Plan, SaysWhatChangesAndWhatCannot) {
  struct Case {
    Values standard, device;
    bool out_of_range;
    const char* text;
    bool is_complete;
  };
  const Case cases[] = {
      {{{"HeatMax", "30"}}, {{"HeatMax", "32"}}, false, "HeatMax 32>30; ", true},
      {{{"HeatMax", "30"}}, {{"HeatMax", "30"}}, false, "", true},
      // As Apply stores it, so that the next plan finds nothing to do.
      {{{"HeatMax", "32"}}, {{"HeatMax", "30"}}, false, "HeatMax 30>31.95; ", true},
      {{{"HeatMax", "32"}}, {{"HeatMax", "31.95"}}, false, "", true},
      // 32.1 C is 89.78 F, within the limits of a room that is set in Fahrenheit.
      {{{"HeatMax", "32.1"}}, {{"HeatMax", "30"}}, false, "HeatMax 30>32.1; ", true},
      {{{"HeatMax", "40"}},
       {{"HeatMax", "30"}},
       false,
       "HeatMax: outside the limits, which are 4.5 to 32 C or 40 to 90 F; ",
       false},
      {{{"HeatMax", "40"}}, {{"HeatMax", "30"}}, true, "HeatMax 30>40; ", true},
      {{{"FanMode", "HIGH"}}, {}, false, "FanMode: not read: silent; ", false},
      {{{"CalibRS", "1"}},
       {{"CalibRS", "0"}},
       false,
       "CalibRS: corrects the sensor of another device; ",
       true},
      {{{"nciSetPts.occ_heat", "23"}, {"FanMode", "HIGH"}},
       {{"nciSetPts.occ_heat", "21"}, {"nciSetPts.occ_cool", "24"}, {"DeadBand", "2"}, {"FanMode", "AUTO"}},
       false,
       "would break a rule: nciSetPts.occ_cool is less than DeadBand above nciSetPts.occ_heat",
       false},
      // The device breaks the rule already, in fields that stay as they are.
      {{{"FanMode", "HIGH"}},
       {{"nciSetPts.occ_heat", "23"}, {"nciSetPts.occ_cool", "24"}, {"DeadBand", "2"}, {"FanMode", "AUTO"}},
       false,
       "FanMode AUTO>HIGH; ",
       true},
      {{{"nciSetPts.occ_heat", "24"}, {"nciSetPts.occ_cool", "26"}},
       {{"nciSetPts.occ_heat", "21"}, {"nciSetPts.occ_cool", "23"}, {"DeadBand", "2"}},
       false,
       "nciSetPts.occ_heat 21>24; nciSetPts.occ_cool 23>26; ",
       true}};
  for (const Case& c : cases) {
    settings::ReadDevice device{With(c.device, "01"), false, {}};
    if (c.device.empty()) device.settings = With({{"HeatMax", "30"}}, "01");
    device.settings.unread = {{"nciGenOpts", "silent"}};
    const auto plan = rollout::PlanFor("A/B.C/D", device, With(c.standard, "02"), {}, c.out_of_range);
    EXPECT_EQ(TextOf(plan), c.text);
    EXPECT_EQ(plan.IsComplete(), c.is_complete) << c.text;
  }
  for (const auto& [device, problem] : std::initializer_list<std::pair<settings::ReadDevice, const char*>>{
           {{{}, true, {}}, "another type: "}, {{{}, false, "offline"}, "offline"}})
    EXPECT_EQ(rollout::PlanFor("A/B.C/D", device, With({{"FanMode", "HIGH"}}, ""), {}, false).problem,
              problem);
}

rollout::Plan Some() {
  const settings::Field &heat = *FindField("HeatMax"), &fan = *FindField("FanMode");
  return {"2026-11-23T10:15:00Z",
          "me@here",
          "standard.qm5r",
          {{"A/B.C/Room \"1\"\t",
            "00DE00000001",
            {{&heat, "32", "30"}, {&fan, "17", "HIGH"}},
            {{&heat, "a: b"}},
            36,
            ""},
           {"A/B.C/Room 2", "", {}, {}, 0, "not read: \" = silent"}}};
}

TEST(Plan, IsReadBackAsItWasWritten) {
  const std::string text = PlanText(Some());
  const rollout::PlanFile read = rollout::ParsePlan("\xEF\xBB\xBF" + text);
  EXPECT_TRUE(read.findings.empty()) << text;
  EXPECT_EQ(PlanText(read.plan), text);
  EXPECT_EQ(read.plan.devices.at(0).path, Some().devices[0].path);
  EXPECT_EQ(read.plan.devices[0].changes.at(1).before, "17");
  EXPECT_EQ(read.plan.devices[1].problem, Some().devices[1].problem);
}

TEST(Plan, NamesEveryMistakeWithItsLine) {
  const std::string start = "QM5R plan 1.0\n[device]\npath = A/B.C/D\n";
  const std::pair<std::string, const char*> cases[] = {
      {"", "f:1: this is no plan: its first line is not \"QM5R plan 1.0\""},
      {"QM5R plan 2.0\n", "f:1: this is no plan: its first line is not \"QM5R plan 1.0\""},
      {"QM5R plan 1.0\ncolor = red\n", "f:2: there is no information \"color\""},
      {"QM5R plan 1.0\n[device]\nNeuron ID = 1\n", "f:3: the device has no path"},
      {start + "HeatMax 30 C\n", "f:4: there is no \"=\" in \"HeatMax 30 C\""},
      {start + "HeatMin = 30 C -> 31 C\n", "f:4: there is no field \"HeatMin\""},
      {start + "HeatMax = 30 C\n", "f:4: HeatMax has no \" -> \" between the values before and after"},
      {start + "HeatMax = 30 C -> 31 F\n", "f:4: HeatMax is in C, not in F"},
      {start + "HeatMax = 30 -> 31 C\n", "f:4: HeatMax is in C: \"30 C\""},
      {start + "HeatMax = 30 C -> 31 C\nHeatMax = 30 C -> 31 C\n",
       "f:5: HeatMax is given twice for a device"},
      {start + "same = many\n", "f:4: \"many\" is no number of fields"},
      {start + "left out = \"HeatMax\n", "f:4: the quotation marks of \"HeatMax do not fit"},
      {start + "left out = Heat: x\n", "f:4: there is no field \"Heat\""},
      {start + "\xFF = 1\n", "f:4: the line is not UTF-8 text"}};
  for (const auto& [text, finding] : cases) {
    const auto findings = rollout::ParsePlan(text).findings;
    ASSERT_EQ(findings.size(), 1u) << text;
    EXPECT_EQ(FindingText("f", findings[0]), finding);
  }
}

/// A file in memory.
struct Disk : platform::Files {
  struct File : Growing {
    explicit File(std::string& all) : content(all) {}
    void Append(std::string_view text) override { content += text; }
    std::string& content;
  };
  std::optional<Folder> ReadFolder(const std::string&) const override { return std::nullopt; }
  std::string ReadStart(const std::string&, std::size_t) const override { return content; }
  bool FileExists(const std::string& path) const override { return path == taken; }
  void Write(const std::string&, std::string_view) override {}
  void WriteNew(const std::string&, std::string_view) override {}
  std::unique_ptr<Growing> CreateGrowing(const std::string&) override {
    return std::make_unique<File>(content);
  }
  std::string content, taken;
};

TEST(Record, IsReadBackAndKnowsATornLastLine) {
  Disk disk;
  disk.taken = "R\\2026-11-23T10-15-00Z A%3AB.qm5rrecord";
  rollout::Record record(disk, "R", {"2026-11-23T10:15:00Z", "me@here", "A:B", "apply"}, Some(),
                         [] { return "later"; });
  EXPECT_EQ(record.path(), "R\\2026-11-23T10-15-00Z A%3AB 2.qm5rrecord");
  const rollout::Write write{"A/B.C/D\t", "01", "nciSetPts", "#SI", "1,2\r\n", "1,\"3"};
  record.Begin(write);
  const std::size_t begun = disk.content.size();
  record.End(write, "verified", "");
  record.EndDevice(write.path, "verified", "");
  const auto whole = rollout::ParseRecord(disk.content);
  EXPECT_TRUE(whole.findings.empty() && !whole.is_torn);
  EXPECT_EQ(whole.head.network, "A:B");
  EXPECT_EQ(PlanText(whole.plan), PlanText(Some()));
  ASSERT_EQ(whole.events.size(), 3u);
  EXPECT_EQ(whole.events[0].write.before, write.before);
  EXPECT_EQ(whole.events[0].write.after, write.after);
  EXPECT_EQ(whole.events[1].state, "verified");
  EXPECT_EQ(whole.events[2].write.path, write.path);

  // Wherever the computer stops, nothing before it is lost.
  for (std::size_t length = begun; length < disk.content.size(); ++length) {
    const auto torn = rollout::ParseRecord(disk.content.substr(0, length));
    EXPECT_TRUE(torn.findings.empty());
    EXPECT_EQ(torn.events.size(), 1 + (length >= disk.content.rfind("device\t")));
    EXPECT_EQ(torn.is_torn, length != begun && length != disk.content.rfind("device\t")) << length;
  }
  std::string changed = disk.content;
  changed[changed.find("1,\\\"3") + 3] = '4';
  EXPECT_EQ(rollout::ParseRecord(changed).findings.size(), 1u);
  EXPECT_EQ(rollout::ParseRecord("").findings.size(), 1u);
  EXPECT_EQ(rollout::ParseRecord("QM5R record 2.0\r\n").findings.size(), 1u);
}

}  // namespace
