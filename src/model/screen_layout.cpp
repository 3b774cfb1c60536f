#include "model/screen_layout.h"

namespace model {
namespace {

using enum UnitLabel;

constexpr FieldPlace kHeating[] = {
    {"Occupied", txtNvi(0), Temperature},
    {"StandBy", txtNvi(18), Temperature},
    {"Unoccupied", txtNvi(1), Temperature},
    {"Maximum limit", txtNvi(2), Temperature},
};
constexpr FieldPlace kCooling[] = {
    {"Occupied", txtNvi(3), Temperature},
    {"Standby", txtNvi(19), Temperature},
    {"Unoccupied", txtNvi(4), Temperature},
    {"Minimum limit", txtNvi(5), Temperature},
};
constexpr FieldPlace kSetpointOptions[] = {{"Setpoint type", cbNvi(0)}};
constexpr FieldPlace kCommonOptions[] = {
    {"Cycle Per Hour", cbNvi(1)},
    {"Heating cooling minimum setpoint deadband", txtNvi(16), Temperature},
};

constexpr FieldPlace kFanMode[] = {{"", cbNvi(16)}};
constexpr FieldPlace kSystemType[] = {{"", cbNvi(11)}};
constexpr FieldPlace kTemporaryOccTime[] = {{"Hours", txtNvi(17)}};
constexpr FieldPlace kFanSequence[] = {{"", cbNvi(10)}};
constexpr FieldPlace kDisplay[] = {
    {"Auto Function", cbNvi(14)}, {"Menu Scroll", cbNvi(13)}, {"Scale", cbNvi(12)}};
constexpr FieldPlace kSequence[] = {{"", cbNvi(15)}};

constexpr FieldPlace kBinaryInput1[] = {{"", cbNvi(2)}};
constexpr FieldPlace kBinaryInput2[] = {{"", cbNvi(3)}};
constexpr FieldPlace kSensorCalibration[] = {{"Room sensor offset", txtNvi(6), Temperature}};
constexpr FieldPlace kUniversalInput[] = {{"", cbNvi(4)}};
constexpr FieldPlace kActuatorTiming[] = {{"Min", txtNvi(14)}};
constexpr FieldPlace kControlType[] = {{"", cbNvi(5)}};
constexpr FieldPlace kReverseAction[] = {{"", cbNvi(6)}};
constexpr FieldPlace kAuxiliaryContacts[] = {{"", cbNvi(7)}, {"Reheat time base", cbNvi(8)}};

constexpr FieldPlace kDehumidification[] = {{"Setpoint", txtNvi(7), Percent},
                                            {"Hysteresis", txtNvi(8), Percent},
                                            {"Max Cooling output", txtNvi(9), Percent}};
constexpr FieldPlace kDisplayHumidity[] = {{"", cbNvi(9)}};
// A humidity offset under a temperature label and unit: deliberate, the screen has always read so.
constexpr FieldPlace kHumidityCalibration[] = {{"Room sensor offset", txtNvi(10), Temperature}};

constexpr FieldPlace kTimers[] = {{"Stand-By Timer", txtNvi(20)}, {"Unoccupied Timer", txtNvi(21)}};

// "Trottle" is spelled so deliberately.
constexpr FieldPlace kOutput[] = {{"Heartbeat", txtNvi(39), Seconds}, {"Trottle", txtNvi(40), Seconds}};
constexpr FieldPlace kInput[] = {{"Heartbeat", txtNvi(41), Seconds}};

constexpr FieldPlace kThermostat[] = {{"Model", txtNvi(11)}, {"Version", txtNvi(12)}};
constexpr FieldPlace kPlugIn[] = {{"Major Version", {ScreenArray::txtMajorVersion}},
                                  {"Minor Version", {ScreenArray::txtMinorVersion}}};
constexpr FieldPlace kNetworkModule[] = {{"Major Version", txtNvi(13)}, {"Minor Version", txtNvi(15)}};

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
    {4, "", "", "", {}},  // a frame without caption that stays empty
    {5, "", "Output", "", kOutput},
    {5, "", "Input", "", kInput},
    {7, "", "Version Information", "", {}},
    {7, "Version Information", "Thermostat", "", kThermostat},
    {7, "Version Information", "Plug-In", "", kPlugIn},
    {7, "Version Information", "Network Module", "", kNetworkModule},
};

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

std::span<const std::string_view> ListItems(int index) { return kListItems[index]; }

}  // namespace model
