#include "model/device_point.h"

#include <gtest/gtest.h>

#include "fake_variable.h"

namespace {

using platform::ObjectServerError;

constexpr std::int32_t kForeignError = static_cast<std::int32_t>(0x800706BAu);

TEST(DevicePoint, ReadsInThreeOperationsAndSplits) {
  FakePoint fake;
  fake.point.GetNetworkValue(0);
  EXPECT_EQ(fake.variable->journal, (std::vector<std::string>{"option 0", "format #SISNVT_temp_setpt", "read"}));
  EXPECT_EQ(fake.point.NvAsArray, (std::vector<std::string>{"23", "25", "28", "21", "19", "16"}));
  EXPECT_EQ(fake.point.NvAsString(), "23,25,28,21,19,16");

  const std::tuple<bool, int, const char*> formats[] = {
      {true, 0, "#SISNVT_temp_setpt"}, {true, 1, "#USSNVT_temp_setpt"}, {false, 0, "SNVT_temp_setpt"}, {false, 1, "SNVT_temp_setpt"}};
  for (const auto& [localized, units, format] : formats) {
    fake.point.LocalizationSpecific = localized;
    fake.point.GetNetworkValue(units);
    EXPECT_EQ(fake.variable->format, format);
  }
  fake.variable->value = "";
  fake.point.GetNetworkValue(0);
  EXPECT_TRUE(fake.point.NvAsArray.empty());
  EXPECT_EQ(fake.point.NvAsString(), "");
}

TEST(DevicePoint, WritesAllFieldsInTheFormatOfTheLastRead) {
  FakePoint fake;
  fake.point.GetNetworkValue(0);
  fake.variable->journal.clear();
  fake.point.NvAsArray[3] = "21.5";
  fake.point.ValueAsChanges = true;
  EXPECT_TRUE(fake.point.SendNetworkValue());
  EXPECT_EQ(fake.variable->journal, (std::vector<std::string>{"option 0", "write 23,25,28,21.5,19,16"}));
  EXPECT_FALSE(fake.point.ValueAsChanges);
}

TEST(DevicePoint, FailuresKeepTheNumberAndTellThePoint) {
  struct Case {
    std::int32_t number;
    const char* read_text;
    const char* write_text;
  };
  const Case cases[] = {
      {ObjectServerError(18200), "Error reading nciSetPts \r\nFailed to communicate with target device.",
       "Error updatingnciSetPts \r\nserver's own text"},
      {ObjectServerError(18034), "Error reading nciSetPts \r\nserver's own text",
       "Error updating nciSetPts \r\nFailed to write data to the network variable object."},
      {ObjectServerError(18035), "Error reading nciSetPts \r\nserver's own text",
       "Error updating nciSetPts \r\nAn attempt to format the requested data has failed."},
      {ObjectServerError(1), "Error reading nciSetPts \r\nserver's own text", "Error updatingnciSetPts \r\nserver's own text"},
  };
  for (const Case& c : cases) {
    FakePoint fake;
    fake.point.GetNetworkValue(0);
    fake.point.ValueAsChanges = true;
    fake.variable->fail_read = fake.variable->fail_write = c.number;
    const auto expect = [&](auto step, const char* source, const std::string& text) {
      try {
        step();
        ADD_FAILURE() << "no failure";
      } catch (const platform::Error& error) {
        EXPECT_EQ(error.number(), c.number);
        EXPECT_EQ(error.source(), source);
        EXPECT_EQ(error.description(), text);
      }
    };
    expect([&] { fake.point.GetNetworkValue(0); }, "GetNetworkValue", c.read_text);
    expect([&] { fake.point.SendNetworkValue(); }, "SendNetworkValue", c.write_text);
    EXPECT_TRUE(fake.point.ValueAsChanges);
    EXPECT_EQ(fake.point.NvAsArray.size(), 6u);
  }
}

TEST(DevicePoint, AnErrorThatIsNotTheObjectServersOverflows) {
  for (const std::int32_t number : {kForeignError, 9, static_cast<std::int32_t>(0x80048000u)}) {
    FakePoint fake;
    fake.variable->fail_read = number;
    try {
      fake.point.GetNetworkValue(0);
      ADD_FAILURE() << "no failure";
    } catch (const platform::Error& error) {
      EXPECT_EQ(error.number(), 6) << number;
      EXPECT_EQ(error.description(), "Overflow");
    }
  }
}

TEST(DevicePoint, AFailedReadPutsTheFormatOfItsFieldsBack) {
  FakePoint fake;
  fake.point.GetNetworkValue(0);
  fake.variable->fail_read = ObjectServerError(18200);
  EXPECT_THROW(fake.point.GetNetworkValue(1), platform::Error);
  EXPECT_EQ(fake.variable->format, "#SISNVT_temp_setpt");
  EXPECT_EQ(fake.point.NvAsArray[3], "21");

  fake.variable->journal.clear();
  EXPECT_THROW(fake.point.GetNetworkValue(0), platform::Error);
  EXPECT_EQ(fake.variable->journal.size(), 3u) << "in the same units there is nothing to put back";
}

}  // namespace
