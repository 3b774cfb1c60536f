#pragma once

#include <cstdint>
#include <string>

#include "registry/registry.h"

namespace plugin {

/// The settings that the plug-in keeps in its machine key.
///
/// 0 only for the stored text "0"; anything else, also nothing, is 1 (Fahrenheit).
std::int16_t StoredDisplayUnits(const registry::CRegistry& registry, const std::string& plug_in_key);
void StoreDisplayUnits(registry::CRegistry& registry, const std::string& plug_in_key, std::int16_t units);

/// 1 where the stored number rounds to 1, else 0.
std::int16_t StoredDebugMode(const registry::CRegistry& registry, const std::string& plug_in_key);

/// The unit shown beside temperatures. It begins with the masculine ordinal indicator (U+00BA) in place of
/// the degree sign, deliberately.
std::string TemperatureUnit(int units);

}  // namespace plugin
