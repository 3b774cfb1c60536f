#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "qm5r/sources.h"
#include "settings/comparison.h"

/// What the commands print: text for people, JSON for programs.
namespace qm5r {

using Json = nlohmann::ordered_json;

/// Also if a name is no valid text.
std::string TextOf(const Json& json);

/// "21 C"; temperatures in Fahrenheit if asked for.
std::string ValueText(const settings::Field& field, const std::string& text, bool fahrenheit = false);

/// A device's settings as lines: name, value, and the field's place on the screen.
std::string SettingsLines(const Source& source, bool fahrenheit);
Json SettingsJson(const Source& source, bool fahrenheit);

/// "not read", "another type", "incomplete" or "read".
std::string StateOf(const settings::ReadDevice& device);
/// Why the device, or a part of it, is not known; empty if it is.
std::string ReasonOf(const settings::ReadDevice& device);

/// The device and what differs, as lines. `wanted_by` says whose value is wanted: "standard" or "most".
std::string ComparisonLines(const Source& source, const settings::Comparison& comparison,
                            const std::string& wanted_by);
Json DifferencesJson(const settings::Comparison& comparison);
Json ComparisonJson(const Source& source, const settings::Comparison& comparison);

}  // namespace qm5r
