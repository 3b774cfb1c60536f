#include "model/screen_layout.h"

#include <algorithm>

namespace model {
namespace {

using enum Unit;

// clang-format off
constexpr FieldRow kHeating[] = {
    {"Occupied", txtNvi(0), Temperature, Temperature, "Room temperature that heating maintains while the room is occupied."},
    {"StandBy", txtNvi(18), Temperature, Temperature, "Room temperature that heating maintains while the room is on standby."},
    {"Unoccupied", txtNvi(1), Temperature, Temperature, "Room temperature that heating maintains while the room is unoccupied."},
    {"Maximum limit", txtNvi(2), Temperature, Temperature, "Highest heating setpoint allowed."},
};
constexpr FieldRow kCooling[] = {
    {"Occupied", txtNvi(3), Temperature, Temperature, "Room temperature that cooling maintains while the room is occupied."},
    {"Standby", txtNvi(19), Temperature, Temperature, "Room temperature that cooling maintains while the room is on standby."},
    {"Unoccupied", txtNvi(4), Temperature, Temperature, "Room temperature that cooling maintains while the room is unoccupied."},
    {"Minimum limit", txtNvi(5), Temperature, Temperature, "Lowest cooling setpoint allowed."},
};
constexpr FieldRow kSetpointOptions[] = {
    {"Setpoint type", cbNvi(0), None, None, "Whether a setpoint changed at the thermostat is permanent or temporary."},
};
constexpr FieldRow kCommonOptions[] = {
    {"Cycle Per Hour", cbNvi(1), None, None, "Control cycles per hour."},
    {"Heating cooling minimum setpoint deadband", txtNvi(16), Temperature, TemperatureDifference, "Smallest difference allowed between the heating and the cooling setpoint."},
};

constexpr FieldRow kFanMode[] = {
    {"", cbNvi(16), None, None, "How the fan runs: at a fixed speed, automatically, or on."},
};
constexpr FieldRow kSystemType[] = {
    {"", cbNvi(11), None, None, "Whether the fan coil has two or four pipes."},
};
constexpr FieldRow kTemporaryOccTime[] = {
    {"Hours", txtNvi(17), None, Hours, "How long a temporary occupancy lasts, in hours."},
};
constexpr FieldRow kFanSequence[] = {
    {"", cbNvi(10), None, None, "Which fan modes the fan menu of the thermostat offers, and in which order."},
};
constexpr FieldRow kDisplay[] = {
    {"Auto Function", cbNvi(14), None, None, "Whether the automatic function of the thermostat is on."},
    {"Menu Scroll", cbNvi(13), None, None, "Whether the menu on the display of the thermostat scrolls."},
    {"Scale", cbNvi(12), None, None, "Temperature scale of the thermostat's own display."},
};
constexpr FieldRow kSequence[] = {
    {"", cbNvi(15), None, None, "Which of heating, cooling and reheat the thermostat controls."},
};

constexpr FieldRow kBinaryInput1[] = {
    {"", cbNvi(2), None, None, "What the contact at binary input 1 is used for."},
};
constexpr FieldRow kBinaryInput2[] = {
    {"", cbNvi(3), None, None, "What the contact at binary input 2 is used for."},
};
constexpr FieldRow kSensorCalibration[] = {
    {"Room sensor offset", txtNvi(6), Temperature, TemperatureDifference, "Correction of the measured room temperature."},
};
constexpr FieldRow kUniversalInput[] = {
    {"", cbNvi(4), None, None, "What is connected to universal input 3."},
};
constexpr FieldRow kActuatorTiming[] = {
    {"Min", txtNvi(14), None, Minutes, "Running time of a floating actuator, in minutes."},
};
constexpr FieldRow kControlType[] = {
    {"", cbNvi(5), None, None, "How the outputs control: on/off or floating."},
};
constexpr FieldRow kReverseAction[] = {
    {"", cbNvi(6), None, None, "Whether the analogue outputs act in reverse."},
};
constexpr FieldRow kAuxiliaryContacts[] = {
    {"", cbNvi(7), None, None, "What the auxiliary contact is used for."},
    {"Reheat time base", cbNvi(8), None, None, "Time base of reheat."},
};

constexpr FieldRow kDehumidification[] = {
    {"Setpoint", txtNvi(7), Percent, Percent, "Relative humidity that dehumidification maintains in the room."},
    {"Hysteresis", txtNvi(8), Percent, Percent, "Hysteresis of dehumidification, in percent relative humidity."},
    {"Max Cooling output", txtNvi(9), Percent, Percent, "Highest cooling output while the thermostat dehumidifies."},
};
constexpr FieldRow kDisplayHumidity[] = {
    {"", cbNvi(9), None, None, "Whether the thermostat displays the relative humidity."},
};
// The temperature label and unit of this humidity offset are deliberate.
constexpr FieldRow kHumidityCalibration[] = {
    {"Room sensor offset", txtNvi(10), Temperature, Percent, "Correction of the measured relative humidity, in percent."},
};

constexpr FieldRow kTimers[] = {
    {"Stand-By Timer", txtNvi(20), None, None, "Delay of the PIR sensor before the room goes to standby."},
    {"Unoccupied Timer", txtNvi(21), None, None, "Delay of the PIR sensor before the room becomes unoccupied."},
};

// The spelling "Trottle" is deliberate.
constexpr FieldRow kOutput[] = {
    {"Heartbeat", txtNvi(39), Seconds, Seconds, "Longest time between two transmissions of an output value, in seconds."},
    {"Trottle", txtNvi(40), Seconds, Seconds, "Shortest time between two transmissions of an output value, in seconds."},
};
constexpr FieldRow kInput[] = {
    {"Heartbeat", txtNvi(41), Seconds, Seconds, "Longest time that the thermostat waits for an input value, in seconds."},
};

constexpr FieldRow kThermostat[] = {
    {"Model", txtNvi(11), None, None, "Model that the thermostat reports."},
    {"Version", txtNvi(12), None, None, "Software version that the thermostat reports."},
};
constexpr FieldRow kPlugIn[] = {
    {"Major Version", {ScreenArray::txtMajorVersion}, None, None, "Major version of this plug-in."},
    {"Minor Version", {ScreenArray::txtMinorVersion}, None, None, "Minor version of this plug-in."},
};
constexpr FieldRow kNetworkModule[] = {
    {"Major Version", txtNvi(13), None, None, "Major version that the network module reports."},
    {"Minor Version", txtNvi(15), None, None, "Minor version that the network module reports."},
};

constexpr FieldRow kOverTheTabs[] = {
    {"", {ScreenArray::lbModel}, None, None, "Thermostat model that the device reports."},
    {"", {ScreenArray::lbHvacType}, None, None, "Type of HVAC equipment that the device reports."},
};
// clang-format on

constexpr FramePlace kFrames[] = {
    {0, "", "Heating", "Setpoints", kHeating},
    {0, "", "Cooling", "Setpoints", kCooling},
    {0, "", "Setpoint options", "", kSetpointOptions},
    {0, "", "Common Options", "", kCommonOptions},
    {1, "", "Fan Mode", "", kFanMode},
    {1, "", "System type", "", kSystemType},
    {1, "", "Temporary Occ Time", "", kTemporaryOccTime},
    {1, "", "Fan mode sequence and menu", "", kFanSequence},
    {1, "", "Display", "", kDisplay},
    {1, "", "Sequence of operations", "", kSequence},
    {2, "", "Inputs", "", {}},
    {2, "Inputs", "Binary Input #1", "", kBinaryInput1},
    {2, "Inputs", "Binary Input #2", "", kBinaryInput2},
    {2, "Inputs", "Temperature sensor calibration", "", kSensorCalibration},
    {2, "Inputs", "Universal Input 3", "", kUniversalInput},
    {2, "", "Outputs", "", {}},
    {2, "Outputs", "Floating actuator timing", "", kActuatorTiming},
    {2, "Outputs", "Control Type", "", kControlType},
    {2, "Outputs", "Reverse AO Action", "", kReverseAction},
    {2, "Outputs", "Auxiliary Contacts", "", kAuxiliaryContacts},
    {3, "", "Dehumidification", "", kDehumidification},
    {3, "", "Display relative humidity", "", kDisplayHumidity},
    {3, "", "RH sensor calibration", "", kHumidityCalibration},
    {4, "", "&Timers", "", kTimers},
    {4, "", "", "", {}},  // deliberately empty, without caption
    {5, "", "Output", "", kOutput},
    {5, "", "Input", "", kInput},
    {7, "", "Version Information", "", {}},
    {7, "Version Information", "Thermostat", "", kThermostat},
    {7, "Version Information", "Plug-In", "", kPlugIn},
    {7, "Version Information", "Network Module", "", kNetworkModule},
};

static_assert(std::ranges::all_of(kFrames,
                                  [](const FramePlace& frame) {
                                    return frame.inside.empty() ||
                                           std::ranges::count(kFrames, frame.inside, &FramePlace::caption) ==
                                               1;
                                  }),
              "a frame names the caption of the frame around it");

constexpr std::string_view kItems0[] = {"PERMANENT", "TEMPORARY"};
constexpr std::string_view kItems1[] = {"3", "4", "5", "6", "7", "8"};
constexpr std::string_view kItems2[] = {"NONE", "REM_NSB", "MOTION_NO", "MOTION_NC", "WINDOW"};
constexpr std::string_view kItems3[] = {"NONE", "DOOR_DRY", "OVERRIDE", "SERVICE", "FILTER"};
constexpr std::string_view kItems4[] = {"NONE", "COC_NH", "COC_NC", "COS", "SS"};
constexpr std::string_view kItems5[] = {"ON_OFF", "FLOATING"};
constexpr std::string_view kOffOn[] = {"OFF", "ON"};
constexpr std::string_view kItems7[] = {"USED_FOR_REHEAT",    "NO_WITH_OCCUPANCY",  "NC_WITH_OCCUPANCY",
                                        "NO_WITH_OCC_FAN_ON", "NC_WITH_OCC_FAN_ON", "REMOTE_CONTROL"};
constexpr std::string_view kItems8[] = {"RTB_15_MINUTES", "RTB_10_SECONDS"};
constexpr std::string_view kItems10[] = {"LOW_MED_HIGH", "LOW_HIGH", "LOW_MED_HIGH_AUTO", "LOW_HIGH_AUTO",
                                         "ON_AUTO"};
constexpr std::string_view kItems11[] = {"TWO_PIPE", "FOUR_PIPE"};
constexpr std::string_view kItems12[] = {"CELSIUS", "FAHRENHEIT"};
constexpr std::string_view kItems13[] = {"NO_SCROLL", "SCROLL_ACTIVE"};
constexpr std::string_view kItems15[] = {"COOLING_ONLY",     "HEATING_ONLY", "COOLING_W_REHEAT",
                                         "HEATING_W_REHEAT", "HEAT_COOL",    "HEAT_COOL_W_REHEAT"};
constexpr std::string_view kItems16[] = {"LOW", "MEDIUM", "HIGH", "AUTO", "ON"};

constexpr std::span<const std::string_view> kListItems[kChoiceListCount] = {
    kItems0, kItems1,  kItems2,  kItems3,  kItems4,  kItems5, kOffOn,   kItems7, kItems8,
    kOffOn,  kItems10, kItems11, kItems12, kItems13, kOffOn,  kItems15, kItems16};

}  // namespace

std::span<const FramePlace> Frames() { return kFrames; }

std::vector<FieldRow> Fields() {
  std::vector<FieldRow> fields(std::begin(kOverTheTabs), std::end(kOverTheTabs));
  for (const FramePlace& frame : kFrames)
    fields.insert(fields.end(), frame.fields.begin(), frame.fields.end());
  return fields;
}

std::optional<FieldRow> FieldOf(ControlRef control) {
  for (const FieldRow& field : Fields())
    if (field.control == control) return field;
  return std::nullopt;
}

std::string UnitText(Unit unit, int display_units) {
  switch (unit) {
    case None:
      return {};
    case Temperature:
    case TemperatureDifference:
      return TemperatureUnit(display_units);
    case Percent:
      return "%";
    case Seconds:
      return "Sec";
    case Minutes:
      return "Min";
    case Hours:
      return "Hours";
  }
  return {};
}

std::string TemperatureUnit(int units) { return units == 0 ? "\u00BAC" : units == 1 ? "\u00BAF" : "\u00BAX"; }

std::span<const std::string_view> ListItems(int index) { return kListItems[index]; }

}  // namespace model
