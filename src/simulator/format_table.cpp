#include "simulator/format_table.h"

namespace simulator {
namespace {

using Names = std::string_view[];

constexpr Names kOffOn = {"OFF", "ON"};
constexpr Names kControlType = {"ON_OFF", "FLOATING"};
constexpr Names kInput1 = {"NONE", "REM_NSB", "MOTION_NO", "MOTION_NC", "WINDOW"};
constexpr Names kInput2 = {"NONE", "DOOR_DRY", "OVERRIDE", "SERVICE", "FILTER"};
constexpr Names kInput3 = {"NONE", "COC_NH", "COC_NC", "COS", "SS"};
constexpr Names kMenuScroll = {"NO_SCROLL", "SCROLL_ACTIVE"};
constexpr Names kTempScale = {"CELSIUS", "FAHRENHEIT"};
constexpr Names kPipes = {"TWO_PIPE", "FOUR_PIPE"};
constexpr Names kSequence = {"COOLING_ONLY",     "HEATING_ONLY", "COOLING_W_REHEAT",
                             "HEATING_W_REHEAT", "HEAT_COOL",    "HEAT_COOL_W_REHEAT"};
constexpr Names kFanMenu = {"LOW_MED_HIGH", "LOW_HIGH", "LOW_MED_HIGH_AUTO", "LOW_HIGH_AUTO", "ON_AUTO"};
constexpr Names kSetpointType = {"PERMANENT", "TEMPORARY"};
constexpr Names kAuxiliary = {"USED_FOR_REHEAT",    "NO_WITH_OCCUPANCY",  "NC_WITH_OCCUPANCY",
                              "NO_WITH_OCC_FAN_ON", "NC_WITH_OCC_FAN_ON", "REMOTE_CONTROL"};
constexpr Names kReheat = {"RTB_15_MINUTES", "RTB_10_SECONDS"};
constexpr Names kFanMode = {"LOW", "MEDIUM", "HIGH", "AUTO", "ON"};
constexpr Names kHvacType = {"HVT_NUL",       "HVT_GENERIC", "HVT_FAN_COIL",  "HVT_VAV",
                             "HVT_HEAT_PUMP", "HVT_ROOFTOP", "HVT_UNIT_VENT", "HVT_CHILL_CEIL",
                             "HVT_RADIATOR",  "HVT_AHU",     "HVT_SELF_CONT"};

constexpr Field Choice(std::string_view name, std::span<const std::string_view> choices) {
  return {name, 1, false, 1, Quantity::Plain, choices};
}
constexpr Field Temperature(std::string_view name) { return {name, 2, true, 100, Quantity::Temperature}; }
constexpr Field Difference(std::string_view name) { return {name, 2, true, 100, Quantity::Difference}; }
constexpr Field HalfSteps(std::string_view name) { return {name, 1, false, 2}; }
constexpr Field Whole(std::string_view name) { return {name, 1, false, 1}; }

constexpr Field kTemperature[] = {Temperature("value")};
constexpr Field kSetpoints[] = {
    Temperature("occ_cool"), Temperature("standby_cool"), Temperature("unocc_cool"),
    Temperature("occ_heat"), Temperature("standby_heat"), Temperature("unocc_heat"),
};
constexpr Field kHumidity[] = {
    Choice("RHdisplay", kOffOn), HalfSteps("RHsetpoint"), HalfSteps("DehumHyst"),
    HalfSteps("DehumCool"),      {"RHcalib", 1, true, 2},
};
constexpr Field kGeneralOptions[] = {
    Choice("ControlType", kControlType),
    HalfSteps("DriveTime"),
    Whole("CyclePerHour"),
    Choice("ReverseAOut", kOffOn),
    Choice("DigitalInput1", kInput1),
    Choice("DigitalInput2", kInput2),
    Choice("DigitalInput3", kInput3),
    Choice("MenuScroll", kMenuScroll),
    Choice("AutoMode", kOffOn),
    Choice("TempScale", kTempScale),
    Choice("Pipes", kPipes),
    Choice("SeqOpera", kSequence),
    Choice("FanMenu", kFanMenu),
    Temperature("HeatMax"),
    Temperature("CoolMin"),
    Choice("SetpointType", kSetpointType),
    Whole("TOccTime"),
    Difference("DeadBand"),
    Difference("CalibRS"),
    Choice("AuxCont", kAuxiliary),
    Choice("Reheat", kReheat),
    Choice("FanMode", kFanMode),
    HalfSteps("PIRStandByTime"),
    HalfSteps("PIRUnoccTime"),
};
constexpr Field kModel[] = {Whole("thermostat_model"), {"software_version", 1, false, 10}};
constexpr Field kHvac[] = {{"value", 1, true, 1, Quantity::Plain, kHvacType, -1}};
constexpr Field kSeconds[] = {{"value", 2, false, 10}};
constexpr Field kSwitch[] = {HalfSteps("value"), {"state", 1, true, 1}};
constexpr Field kPercent[] = {{"value", 2, true, 200}};

constexpr Structure kStructures[] = {
    {"SNVT_temp_p", " ", kTemperature}, {"SNVT_temp_setpt", ",", kSetpoints},
    {"SNVT_time_sec", " ", kSeconds},   {"SNVT_hvac_type", " ", kHvac},
    {"SNVT_switch", " ", kSwitch},      {"SNVT_lev_percent", " ", kPercent},
    {"UNVT_rh_model", " ", kHumidity},  {"UNVT_fc_pir_gen_opts", " ", kGeneralOptions},
    {"UNVT_model_info2", " ", kModel},
};

}  // namespace

std::span<const Structure> Structures() { return kStructures; }

}  // namespace simulator
