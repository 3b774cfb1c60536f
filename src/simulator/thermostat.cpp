#include "simulator/thermostat.h"

#include "simulator/formats.h"

namespace simulator {
namespace {

constexpr const char* kProgramId = "8000D3550004041D";

struct Default {
  const char* name;
  const char* format;
  std::size_t bytes;
  const char* value;
};

constexpr Default kVariables[] = {
    {"nciSetPts", "SNVT_temp_setpt", 12, "23,25,28,21,19,16"},
    {"nciRHmodel", "UNVT_rh_model", 5, "ON 50 5 50 0"},
    {"nciGenOpts", "UNVT_fc_pir_gen_opts", 28,
     "ON_OFF 1.5 4 OFF NONE NONE NONE SCROLL_ACTIVE ON CELSIUS TWO_PIPE HEAT_COOL LOW_MED_HIGH_AUTO "
     "32 12 PERMANENT 2 1.5 0 USED_FOR_REHEAT RTB_15_MINUTES AUTO 0.5 1"},
    {"nciSccModel", "UNVT_model_info2", 2, "4 2.3"},
    {"nciHvacType", "SNVT_hvac_type", 1, "HVT_FAN_COIL"},
    {"nciSndHrtBt", "SNVT_time_sec", 2, "60"},
    {"nciMinOutTm", "SNVT_time_sec", 2, "0.5"},
    {"nciRcvHrtBt", "SNVT_time_sec", 2, "300"},
    {"nciMajVer", "INT", 1, "1"},
    {"nciMinVer", "INT", 1, "4"},
};

}  // namespace

std::vector<stored::Variable> BuiltInVariables(const stored::DeviceTemplate& type) {
  if (type.program_id != kProgramId) return {};
  std::vector<stored::Variable> variables;
  for (const Default& row : kVariables)
    variables.push_back({row.name, row.format, false, Format::Find(row.format)->Parse(row.value, row.bytes)});
  return variables;
}

std::vector<stored::LonMarkObject> BuiltInObjects(const stored::DeviceTemplate& type) {
  if (type.program_id != kProgramId || type.own_variables) return {};
  stored::LonMarkObject node;
  node.name = node.programmatic_name = "Node Object";
  node.variables = {"nciMajVer", "nciMinVer"};
  stored::LonMarkObject thermostat;
  thermostat.name = thermostat.programmatic_name = "Thermostat";
  thermostat.index = 1;
  thermostat.type_index = 8060;
  return {node, thermostat};
}

}  // namespace simulator
