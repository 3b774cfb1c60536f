// A user types anything into any field, leaves it, chooses from lists, applies, cancels and switches units.
// Afterwards every setpoint on the device is within its limits, every value can be read, and what was not
// edited is unchanged.

#include "director/configure.h"
#include "fuzz.h"
#include "headless/user.h"
#include "small_network.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace {

struct Sitting : headless::PlugIn {
  Sitting() : PlugIn(MakeSmallNetwork(), {1, 0, 0}) {
    director::ConfigureRequest request;
    request.path = kSmallDevice;
    api = CreateApi();
    director::Configure(*api, request);
  }

  std::shared_ptr<plugin::LNSPlugInAPI> api;
};

std::string RawOf(const lns::NetworkVariable& variable) {
  variable.SetFormatType("RAW_HEX_PACKED");
  return variable.Value();
}

/// Cooling setpoints come first. The limits in whole °F are slightly wider than those in °C.
void CheckSetpoints(const lns::NetworkVariable& variable) {
  variable.SetFormatType("#SISNVT_temp_setpt");
  const auto setpoints = text::Split(variable.Value(), ",");
  EXPECT_THAT(setpoints.size() == 6);
  for (std::size_t i = 0; i < setpoints.size(); ++i) {
    const double degrees = text::ParseNumber(setpoints[i]).value();
    EXPECT_THAT(i < 3 ? degrees >= 12 && degrees <= 37.8 : degrees >= 4.4 && degrees <= 32.3);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider given(data, size);
  Sitting sitting;
  headless::User user(sitting);
  auto& main = sitting.main;
  const auto variables = main.CurrentDevice().Interface().NetworkVariables();
  const std::string model_before = RawOf(variables.Item("nciSccModel"));
  for (int step = 0; step < 12 && given.remaining_bytes() > 0; ++step) {
    switch (given.ConsumeIntegralInRange(0, 6)) {
      case 0:
        main.cmdApply.UserClicks();
        break;
      case 1:
        main.cmdCancel.UserClicks();
        break;
      case 2:
        main.obUnits[given.ConsumeBool()].UserClicks();
        break;
      case 3:
        main.cmdRefresh.UserClicks();
        break;
      case 4:
        if (ui::ChoiceList* list = main.screen.cbNvi(given.ConsumeIntegralInRange(0, 20)))
          list->UserChooses(given.PickValueInArray({"", "NONE", "ON"}));
        break;
      default:
        if (const int index = given.ConsumeIntegralInRange(0, 45); main.screen.txtNvi(index))
          user.Enter(index, given.ConsumeRandomLengthString(12));
    }
  }
  for (const char* name :
       {"nciSetPts", "nciRHmodel", "nciGenOpts", "nciSndHrtBt", "nciMinOutTm", "nciRcvHrtBt"}) {
    const lns::NetworkVariable variable = variables.Item(name);
    const std::string raw = RawOf(variable);
    EXPECT_THAT(!raw.empty() && raw.find_first_not_of("0123456789ABCDEF") == std::string::npos);
  }
  CheckSetpoints(variables.Item("nciSetPts"));
  EXPECT_THAT(RawOf(variables.Item("nciSccModel")) == model_before);
  return 0;
}
