#include "lns/dialect.h"

#include <gtest/gtest.h>

#include "support/error_of.h"

namespace {

using platform::CallKind;
using platform::Value;

struct Variable : platform::LateBound {
  Value Invoke(const platform::Member& member, CallKind kind, platform::Arguments arguments) override {
    if (kind != CallKind::Put) return text;
    if (member.name == "Value") text = std::get<std::string>(arguments[0]);
    return {};
  }
  std::string text;
};

struct Dialect : testing::Test {
  std::string Read(const std::string& text, const std::string& separator) {
    variable->text = text;
    std::string read;
    return ErrorOf([&] { read = dialect.Value(lns::NetworkVariable(variable), separator); }).number() == 0
               ? read
               : "refused";
  }
  std::string Written(const std::string& text, const std::string& separator) {
    const auto failure =
        ErrorOf([&] { dialect.SetValue(lns::NetworkVariable(variable), text, separator); }).number();
    return failure == 0 ? variable->text : "refused";
  }
  std::shared_ptr<Variable> variable = std::make_shared<Variable>();
  lns::Dialect dialect;
};

TEST_F(Dialect, ReadsAndWritesEveryRegionsSigns) {
  struct Case {
    const char *text, *separator, *read, *edited, *written, *findings;
  };
  const Case cases[] = {
      {"23,25,28.5,21,19,16", ",", "23,25,28.5,21,19,16", "23.5,25,28.5", "23.5,25,28.5", ""},
      {"23;25;28,5;21;19;16", ",", "23,25,28.5,21,19,16", "23.5,25", "23,5;25",
       "decimal comma; ';' in place of ','"},
      {"23;25;28.5", ",", "23,25,28.5", "23.5,25", "23.5;25", "';' in place of ','"},
      {"23 25 28,5", ",", "23,25,28.5", "23.5,25", "23,5 25", "decimal comma; ' ' in place of ','"},
      {"ON 1,5 -0,25 AUTO", " ", "ON 1.5 -0.25 AUTO", "ON 2.5", "ON 2,5", "decimal comma"},
      {"OFF;1,5;AUTO", " ", "OFF 1.5 AUTO", "ON 2.5", "ON;2,5", "decimal comma; ';' in place of ' '"},
      {"23, 25, 28.5", ",", "23, 25, 28.5", "23.5,25", "23.5,25", ""},
      {"4\t23", "\t", "4\t23", "4\t24", "4\t24", ""},
      {"", " ", "", "", "", ""},
      // Without a fraction the decimal sign is unknown.
      {"23;25;28", ",", "23,25,28", "23.5,25", "refused", "';' in place of ','"},
      {"23;25;28", ",", "23,25,28", "24,25", "24;25", "';' in place of ','"},
      {"23 25 28", ",", "23,25,28", "23.5,25", "refused", "' ' in place of ','"},
      {"1.5;2,5", ",", "refused", "1,2", "1,2", ""},
      {"1.234,5", " ", "refused", "1", "1", ""},
      {"23,5;x,y", ",", "refused", "1,2", "1,2", ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    dialect = lns::Dialect();
    EXPECT_EQ(Read(c.text, c.separator), c.read);
    EXPECT_EQ(dialect.TakeFindings(), c.findings);
    EXPECT_EQ(Written(c.edited, c.separator), c.written);
  }
}

TEST_F(Dialect, RefusesACommaAsBothSigns) {
  EXPECT_EQ(Read("23,25", ",") + Read(" 1,5 2", " "), "23,25 1.5 2");
  EXPECT_EQ(Written("20.5,25", ","), "refused") << "the fraction would become a setpoint";
  EXPECT_EQ(Written("20,25", ",") + Written("2.5 2", " "), "20,252,5 2");
}

TEST_F(Dialect, LearnsNoSeparatorFromASingleField) {
  EXPECT_EQ(Read("OFF;1,5;AUTO", " ") + Read("60", " "), "OFF 1.5 AUTO60");
  EXPECT_EQ(Written("ON 2.5", " "), "ON;2,5");
}

TEST_F(Dialect, KeepsOneDecimalSign) {
  EXPECT_EQ(Read("1.5 2", " "), "1.5 2");
  EXPECT_EQ(Read("1,5 2", " "), "refused") << "thousands, or another region";
  EXPECT_EQ(Read("23;25", ","), "23,25");
  EXPECT_EQ(Written("23.5,25", ","), "23.5;25") << "the sign was seen in another value";
}

}  // namespace
