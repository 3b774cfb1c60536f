#include "model/point_list.h"
#include "support/user.h"

namespace {

struct Device : Opened {
  Device() { setpoints.GetNetworkValue(0); }
  void Fail(const char* operation, int code) { simulation->faults().Add({"", "", operation, 1, code}); }

  std::string Format(const std::string& units) const {
    const std::string name = "SNVT_temp_setpt";
    return simulation->installation().strict.formats ? name + units : units + name;
  }

  model::PointList points{main.CurrentDevice().Interface().NetworkVariables(), session.Dialect};
  model::CNvCpTable& setpoints = points.Item("nciSetPts");
};

TEST(DevicePoint, FailuresKeepTheNumberAndNameThePoint) {
  const std::string own = "A fault was set for this operation.";
  struct Case {
    int code;
    std::string read, write;
  };
  const Case cases[] = {
      {18200, " \r\nFailed to communicate with target device.", "nciSetPts \r\n" + own},
      {18034, " \r\n" + own, " nciSetPts \r\nFailed to write data to the network variable object."},
      {18035, " \r\n" + own, " nciSetPts \r\nAn attempt to format the requested data has failed."},
      {1, " \r\n" + own, "nciSetPts \r\n" + own},
  };
  for (const Case& c : cases) {
    Device device;
    device.setpoints.ValueAsChanges = true;
    device.Fail("read", c.code);
    const platform::Error read = ErrorOf([&] { device.setpoints.GetNetworkValue(1); });
    EXPECT_EQ(read.number(), platform::ObjectServerError(static_cast<std::uint16_t>(c.code)));
    EXPECT_EQ(read.source(), "GetNetworkValue");
    EXPECT_EQ(read.description(), "Error reading nciSetPts" + c.read);
    EXPECT_EQ(device.setpoints.MyNetworkVariable.FormatType(), device.Format("#SI")) << "that of its fields";
    device.Fail("write", c.code);
    const platform::Error write = ErrorOf([&] { device.setpoints.SendNetworkValue(); });
    EXPECT_EQ(write.source(), "SendNetworkValue");
    EXPECT_EQ(write.description(), "Error updating" + c.write);
    EXPECT_TRUE(device.setpoints.ValueAsChanges);
    EXPECT_EQ(device.setpoints.NvAsString(), "23,25,28,21,19,16");
  }
  Device device;
  device.Fail("read", 0x8000);
  const platform::Error overflow = ErrorOf([&] { device.setpoints.GetNetworkValue(0); });
  EXPECT_EQ(overflow.number(), 6) << "no code of 16 bits: overflow";
  EXPECT_EQ(overflow.cause(), own);
}

}  // namespace
