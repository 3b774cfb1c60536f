#include "headless/faults.h"
#include "settings/file.h"
#include "user.h"

namespace {

using enum headless::Failure::Reach;
using platform::ObjectServerError;

constexpr headless::Failure kFailures[] = {
    {"does not communicate", ObjectServerError(18200)},
    {"refuses", ObjectServerError(18035)},
    {"is not the object server's", static_cast<std::int32_t>(0x80004005u)},
    {"fails twice", ObjectServerError(17008), Operations, 2},
    {"kills all objects", static_cast<std::int32_t>(0x800706BAu), Server}};

/// Makes each operation of a command fail, one after the other, in every way.
struct Failures : testing::Test {
  Failures() {
    user.Run({"save", kFirstThermostat, "good.qm5r"});
    good = user.File("good.qm5r");
  }

  void Walk(const std::vector<std::string>& words, const std::function<void(int code)>& check) {
    std::size_t operations = 0;
    for (const headless::Failure& failure : kFailures) {
      for (std::size_t first = 0; first <= operations; ++first) {
        user.files.Write("new.qm5r", "");
        faults.Begin(failure, first);
        const int code = user.Run(words);
        faults.End();
        if (first == 0) operations = faults.seen();
        check(code);
        EXPECT_TRUE(user.Operations(" Value=").empty()) << "nothing is written";
        if (HasFailure())
          FAIL() << first << ' ' << faults.struck() << ' ' << failure.name << user.errors.str();
        faults.Forget();
      }
    }
    EXPECT_GT(operations, 40u);
  }

  CommandUser user;
  headless::Faults faults{user};
  std::string good;
};

TEST_F(Failures, ASavedFileHoldsWhatTheDeviceHoldsOrSaysThatItDoesNotKnow) {
  Walk({"save", kFirstThermostat, "new.qm5r", "--force"}, [&](int code) {
    const std::string text = user.File("new.qm5r");
    EXPECT_TRUE(code == 0 || code == 2 || code == 4);
    EXPECT_EQ(code == 0, text == good);
    EXPECT_PRED2(Implies, code == 2, text.empty());
    if (text.empty() || text == good) return;
    const auto file = settings::ParseSettings(text), all = settings::ParseSettings(good);
    EXPECT_FALSE(file.HasErrors());
    EXPECT_FALSE(file.settings.unread.empty());
    for (const settings::Field& field : settings::Fields())
      EXPECT_TRUE(file.settings.TextOf(field) == all.settings.TextOf(field) || file.settings.UnreadOf(field))
          << field.name();
  });
}

TEST_F(Failures, AComparisonNeverCallsEqualWhatItDoesNotKnow) {
  Walk({"compare", "good.qm5r", kFirstThermostat, "Demo Tower/Demo Tower.Floor 1/Thermostat 102", "--fields",
        "*Heat*,nciSndHrtBt", "--json"},
       [&](int code) {
         EXPECT_TRUE(code == 2 || code == 3 || code == 4);
         if (code == 2) return;
         const auto result = user.Json();
         ASSERT_EQ(result["devices"].size(), 2u);
         const std::string states = result["devices"][0]["state"].get<std::string>() + ' ' +
                                    result["devices"][1]["state"].get<std::string>();
         EXPECT_EQ(code == 3, states == "equal different") << states;
         EXPECT_EQ(states.find("different equal"), std::string::npos);
       });
}

}  // namespace
