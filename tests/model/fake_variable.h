#pragma once

#include <memory>
#include <string>
#include <vector>

#include "automation/published.h"
#include "automation/convert.h"
#include "model/device_point.h"

/// A network variable that fails on demand and remembers what was done with it.
class FakeVariable : public automation::PublishedTable<FakeVariable> {
 public:
  std::string value;
  std::string format = "initial";
  std::vector<std::string> journal;
  std::int32_t fail_read = 0;
  std::int32_t fail_write = 0;
  std::int32_t fail_format = 0;

  static std::span<const automation::MemberRow<FakeVariable>> Members() {
    using Self = FakeVariable;
    using platform::Value;
    static const automation::MemberRow<Self> kRows[] = {
        {1, "SourceOptions", nullptr,
         [](Self& self, const Value& v) { self.journal.push_back("option " + automation::ToText(v)); }},
        {2, "DsFormatType", [](Self& self, platform::Arguments) -> Value { return self.format; },
         [](Self& self, const Value& v) {
           self.journal.push_back("format " + automation::ToText(v));
           Self::FailWith(self.fail_format);
           self.format = automation::ToText(v);
         }},
        {3, "Value",
         [](Self& self, platform::Arguments) -> Value {
           self.journal.push_back("read");
           Self::FailWith(self.fail_read);
           return self.value;
         },
         [](Self& self, const Value& v) {
           self.journal.push_back("write " + automation::ToText(v));
           Self::FailWith(self.fail_write);
           self.value = automation::ToText(v);
         }},
    };
    return kRows;
  }

 private:
  static void FailWith(std::int32_t number) {
    if (number != 0) throw platform::Error(number, "server", "server's own text");
  }
};

/// A setpoint point on a fake variable.
struct FakePoint {
  FakePoint() {
    point.Name = "nciSetPts";
    point.Format = "SNVT_temp_setpt";
    point.Separator = ",";
    point.LocalizationSpecific = true;
    point.MyNetworkVariable = lns::NetworkVariable(variable);
    variable->value = "23,25,28,21,19,16";
  }
  std::shared_ptr<FakeVariable> variable = std::make_shared<FakeVariable>();
  model::CNvCpTable point;
};
