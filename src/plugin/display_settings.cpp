#include "plugin/display_settings.h"

#include "text/numbers.h"

namespace plugin {
namespace {

constexpr const char* kDisplayUnits = "DisplayUnits";
constexpr const char* kDebug = "Debug";

}  // namespace

std::int16_t StoredDisplayUnits(const registry::CRegistry& registry, const std::string& plug_in_key) {
  return registry.MachineSetting(plug_in_key, kDisplayUnits) == "0" ? 0 : 1;
}

void StoreDisplayUnits(registry::CRegistry& registry, const std::string& plug_in_key, std::int16_t units) {
  registry.SetMachineSetting(plug_in_key, kDisplayUnits, std::to_string(units));
}

std::int16_t StoredDebugMode(const registry::CRegistry& registry, const std::string& plug_in_key) {
  return text::LeadingWholeNumber(registry.MachineSetting(plug_in_key, kDebug)) == 1 ? 1 : 0;
}

std::string TemperatureUnit(int units) {
  switch (units) {
    case 0:
      return "\u00BAC";
    case 1:
      return "\u00BAF";
    default:
      return "\u00BAX";
  }
}

}  // namespace plugin
