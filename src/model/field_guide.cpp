#include "model/field_guide.h"

#include <algorithm>

namespace model {
namespace {

// clang-format off
constexpr FieldGuide kGuides[] = {
    {txtNvi(0), "Room temperature that heating keeps while the room is occupied."},
    {txtNvi(18), "Room temperature that heating keeps while the room is on standby."},
    {txtNvi(1), "Room temperature that heating keeps while the room is unoccupied."},
    {txtNvi(2), "Highest heating setpoint allowed."},
    {txtNvi(3), "Room temperature that cooling keeps while the room is occupied."},
    {txtNvi(19), "Room temperature that cooling keeps while the room is on standby."},
    {txtNvi(4), "Room temperature that cooling keeps while the room is unoccupied."},
    {txtNvi(5), "Lowest cooling setpoint allowed."},
    {cbNvi(0), "Whether a setpoint changed at the thermostat stays or holds only for a time."},
    {cbNvi(1), "Control cycles per hour."},
    {txtNvi(16), "Smallest difference allowed between the heating and the cooling setpoint."},
    {cbNvi(16), "How the fan runs: at one speed, automatically, or on."},
    {cbNvi(11), "Whether the fan coil has two or four pipes."},
    {txtNvi(17), "How long a temporary occupation lasts, in hours."},
    {cbNvi(10), "Which fan modes the fan menu of the thermostat offers, and in which order."},
    {cbNvi(14), "Whether the automatic function of the thermostat is on."},
    {cbNvi(13), "Whether the menu on the display of the thermostat scrolls."},
    {cbNvi(12), "Temperature scale on the display of the thermostat itself."},
    {cbNvi(15), "Which of heating, cooling and reheat the thermostat controls."},
    {cbNvi(2), "What the contact at binary input 1 is used for."},
    {cbNvi(3), "What the contact at binary input 2 is used for."},
    {txtNvi(6), "Correction of the room temperature that the sensor measures."},
    {cbNvi(4), "What is connected to universal input 3."},
    {txtNvi(14), "Running time of a floating actuator, in minutes."},
    {cbNvi(5), "How the outputs control: on and off, or floating."},
    {cbNvi(6), "Whether the analogue outputs act in reverse."},
    {cbNvi(7), "What the auxiliary contact is used for."},
    {cbNvi(8), "Time base of the reheat."},
    {txtNvi(7), "Relative humidity at which dehumidification is to keep the room."},
    {txtNvi(8), "Hysteresis of the dehumidification, in percent relative humidity."},
    {txtNvi(9), "Highest cooling output while the thermostat dehumidifies."},
    {cbNvi(9), "Whether the thermostat displays the relative humidity."},
    // The label beside this field speaks of a temperature; its value is a humidity all the same.
    {txtNvi(10), "Correction of the relative humidity that the sensor measures, in percent."},
    {txtNvi(20), "Delay of the PIR sensor before the room goes to standby, in hours."},
    {txtNvi(21), "Delay of the PIR sensor before the room becomes unoccupied, in hours."},
    {txtNvi(39), "Longest time between two sendings of an output value, in seconds."},
    {txtNvi(40), "Shortest time between two sendings of an output value, in seconds."},
    {txtNvi(41), "Longest time that the thermostat waits for an input value, in seconds."},
    {txtNvi(11), "Model that the thermostat reports."},
    {txtNvi(12), "Software version that the thermostat reports."},
    {{ScreenArray::txtMajorVersion}, "Major version of this plug-in."},
    {{ScreenArray::txtMinorVersion}, "Minor version of this plug-in."},
    {txtNvi(13), "Major version that the network module reports."},
    {txtNvi(15), "Minor version that the network module reports."},
    {{ScreenArray::lbModel}, "Thermostat model that the device reports."},
    {{ScreenArray::lbHvacType}, "Type of HVAC equipment that the device reports."},
};
// clang-format on

}  // namespace

std::span<const FieldGuide> FieldGuides() { return kGuides; }

const FieldGuide* GuideOf(ControlRef control) {
  const auto* guide = std::ranges::find(kGuides, control, &FieldGuide::control);
  return guide != std::end(kGuides) ? guide : nullptr;
}

}  // namespace model
