#include "model/catalogue.h"

namespace model {
namespace {

constexpr ControlRef kNoControl{};
constexpr ControlRef kLbModel{ScreenArray::lbModel};
constexpr ControlRef kLbHvacType{ScreenArray::lbHvacType};

// These oddities are deliberate: in the setpoint structure cooling comes first, here heating; the standby
// setpoints round to whole degrees and take no offset; "Dehumidifiacation" and "trottle"; the model appears
// twice, and a third time as raw bytes.
// clang-format off
constexpr CatalogueRow kCatalogue[] = {
    // name, description, control, point, index, display rounding, offset, limits: lowest and highest in SI, then in US
    {"nciSetPts.occ_heat", "Occupied heating setpoint", txtNvi(0), "nciSetPts", 3, 0.5, true, CatalogueLimits{4.5, 32, 40, 90}},
    {"nciSetPts.standby_heat", "Occupied standby setpoint", txtNvi(18), "nciSetPts", 4, 1.0, false, CatalogueLimits{4.5, 32, 40, 90}},
    {"nciSetPts.unocc_heat", "Unoccupied heating setpoint", txtNvi(1), "nciSetPts", 5, 0.5, true, CatalogueLimits{4.5, 32, 40, 90}},
    {"nciSetPts.occ_cool", "Occupied cooling setpoint", txtNvi(3), "nciSetPts", 0, 0.5, true, CatalogueLimits{12, 37.5, 54, 100}},
    {"nciSetPts.standby_cool", "Unoccupied standby setpoint", txtNvi(19), "nciSetPts", 1, 1.0, false, CatalogueLimits{12, 37.5, 54, 100}},
    {"nciSetPts.unocc_cool", "Unoccupied cooling setpoint", txtNvi(4), "nciSetPts", 2, 0.5, true, CatalogueLimits{12, 37.5, 54, 100}},
    {"HeatMax", "Maximum heating setpoint limit", txtNvi(2), "nciGenOpts", 13, 0.5, true, CatalogueLimits{4.5, 32, 40, 90}},
    {"CoolMin", "Minimum cooling setpoint limit", txtNvi(5), "nciGenOpts", 14, 0.5, true, CatalogueLimits{12, 37.5, 54, 100}},
    {"SetpointType", "", cbNvi(0), "nciGenOpts", 15},
    {"CyclePerHour", "", cbNvi(1), "nciGenOpts", 2},
    {"DeadBand", "Dead Band", txtNvi(16), "nciGenOpts", 17, 0.5, true, CatalogueLimits{1, 2.5, 2, 5}},
    {"DigitalInput1", "", cbNvi(2), "nciGenOpts", 4},
    {"DigitalInput2", "", cbNvi(3), "nciGenOpts", 5},
    {"DigitalInput3", "", cbNvi(4), "nciGenOpts", 6},
    {"ControlType", "", cbNvi(5), "nciGenOpts", 0},
    {"DriveTime", "Floating actuator timing", txtNvi(14), "nciGenOpts", 1, 0, false, CatalogueLimits{0.5, 9, 0.5, 9}},
    {"ReverseAOut", "", cbNvi(6), "nciGenOpts", 3},
    {"AuxCont", "", cbNvi(7), "nciGenOpts", 19},
    {"Reheat", "", cbNvi(8), "nciGenOpts", 20},
    {"CalibRS", "Room sensor offset", txtNvi(6), "nciGenOpts", 18, 0.5, true, CatalogueLimits{-2.5, 2.5, -5, 5}},
    {"RHdisplay", "", cbNvi(9), "nciRHmodel", 0},
    {"RHsetpoint", "RH Setpoints", txtNvi(7), "nciRHmodel", 1, 0, false, CatalogueLimits{30, 100, 30, 100}},
    {"DehumHyst", "Dehumidifiacation hysteresis", txtNvi(8), "nciRHmodel", 2, 0, false, CatalogueLimits{2, 20, 2, 20}},
    {"DehumCool", "Dehumidifiacation maximum cooling output", txtNvi(9), "nciRHmodel", 3, 0, false, CatalogueLimits{20, 100, 20, 100}},
    {"RHcalib", "RH sensor calibration offset", txtNvi(10), "nciRHmodel", 4, 0, false, CatalogueLimits{-15, 15, -15, 15}},
    {"thermostat_model", "", txtNvi(11), "nciSccModel", 0},
    {"software_version", "", txtNvi(12), "nciSccModel", 1},
    {"MajorVersion", "", txtNvi(13), "nciMajVer", 0},
    {"MinorVersion", "", txtNvi(15), "nciMinVer", 0},
    {"nciHvacType", "", kLbHvacType, "nciHvacType", 0},
    {"FanMenu", "", cbNvi(10), "nciGenOpts", 12},
    {"TOccTime", "Temporary occupied time", txtNvi(17), "nciGenOpts", 16, 0, false, CatalogueLimits{0, 24, 0, 24}},
    {"TempScale", "", cbNvi(12), "nciGenOpts", 9},
    {"MenuScroll", "", cbNvi(13), "nciGenOpts", 7},
    {"AutoMode", "", cbNvi(14), "nciGenOpts", 8},
    {"Pipes", "", cbNvi(11), "nciGenOpts", 10},
    {"SeqOpera", "", cbNvi(15), "nciGenOpts", 11},
    {"FanMode", "", cbNvi(16), "nciGenOpts", 21},
    {"PIRStandByTime", "", txtNvi(20), "nciGenOpts", 22, 0, false, CatalogueLimits{0.5, 24, 0.5, 24}},
    {"PIRUnoccTime", "", txtNvi(21), "nciGenOpts", 23, 0, false, CatalogueLimits{0, 24, 0, 24}},
    {"thermostat_model", "", kLbModel, "nciSccModel", 0},
    {"nciSndHrtBt", "Output heartbeat", txtNvi(39), "nciSndHrtBt", 0, 0, false, CatalogueLimits{0, 6553.4, 0, 6553.4}},
    {"nciMinOutTm", "Output trottle", txtNvi(40), "nciMinOutTm", 0, 0, false, CatalogueLimits{0, 6553.4, 0, 6553.4}},
    {"nciRcvHrtBt", "Input heartbeat", txtNvi(41), "nciRcvHrtBt", 0, 0, false, CatalogueLimits{0, 6553.4, 0, 6553.4}},
    {"thermostat_model", "", kNoControl, "nciSccModelRaw", 0},
};
// clang-format on

}  // namespace

std::span<const CatalogueRow> Catalogue() { return kCatalogue; }

}  // namespace model
