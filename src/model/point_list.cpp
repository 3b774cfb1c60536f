#include "model/point_list.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/error.h"

namespace model {
namespace {

/// The number of fields of the setpoint structure, whose separator may also be a decimal sign.
constexpr std::size_t kSetpoints = 6;

constexpr std::string_view kObject0 = "Network Variables:0";
constexpr std::string_view kObject4 = "Network Variables:4";

// The last row shows nciSccModel a second time, as raw bytes.
// clang-format off
constexpr PointRow kPoints[] = {
    {"nciSetPts",      "nciSetPts",         "Heating / Cooling Setpoints", "nciSetPts",   "SNVT_temp_setpt",      ",",  true,  kObject0},
    {"nciRHmodel",     "nciRHmodel",        "",                            "nciRHmodel",  "UNVT_rh_model",        " ",  false, kObject4},
    {"nciGenOpts",     "nciGenOpts",        "Device General Options",      "nciGenOpts",  "UNVT_fc_pir_gen_opts", " ",  true,  kObject4},
    {"nciSccModel",    "nciSccModel",       "Model number and version",    "nciSccModel", "UNVT_model_info2",     " ",  false, kObject4},
    {"nciHvacType",    "nciHvacType",       "",                            "nciHvacType", "SNVT_hvac_type",       " ",  false, kObject4},
    {"nciSndHrtBt",    "nciSndHrtBt",       "",                            "nciSndHrtBt", "SNVT_time_sec",        " ",  false, kObject4},
    {"nciMinOutTm",    "nciMinOutTm",       "",                            "nciMinOutTm", "SNVT_time_sec",        " ",  false, kObject4},
    {"nciRcvHrtBt",    "nciRcvHrtBt",       "",                            "nciRcvHrtBt", "SNVT_time_sec",        " ",  false, kObject4},
    {"nciMajVer",      "nciMajVer",         "nciMajVer",                   "nciMajVer",   "INT",                  " ",  false, kObject4},
    {"nciMinVer",      "nciMinVer",         "nciMinVer",                   "nciMinVer",   "INT",                  " ",  false, kObject4},
    {"nciSccModelRaw", "nciSccModel (Raw)", "Model number and version",    "nciSccModel", "RAW",                  "\t", false, kObject4},
};
// clang-format on

/// None has the name. False also if they cannot be read.
bool Lacks(const lns::Collection<lns::NetworkVariable>& variables, std::string_view name) {
  return platform::ValueOr(false, [&] {
    for (const lns::NetworkVariable variable : variables.Items())
      if (variable.Name() == name) return false;
    return true;
  });
}

/// Adds to the platform's text what is most likely: this is another type of device.
lns::NetworkVariable Find(const lns::Collection<lns::NetworkVariable>& variables, const std::string& name) {
  try {
    return variables.Item(name);
  } catch (const platform::Error& error) {
    if (!Lacks(variables, name)) throw;
    throw platform::Error(
        error.number(), error.source(),
        error.description() + "\r\nThe device has no variable " + name + "; is it a QM5R-FC?", error.cause());
  }
}

}  // namespace

std::span<const PointRow> PointRows() { return kPoints; }

std::unique_ptr<CNvCpTable> MakePoint(const PointRow& row, const lns::NetworkVariable& variable,
                                      const std::shared_ptr<lns::Dialect>& dialect) {
  auto point = std::make_unique<CNvCpTable>();
  point->Name = row.name;
  point->Description = row.description;
  point->Separator = row.separator;
  point->Format = row.format;
  point->LocalizationSpecific = row.localization_specific;
  point->MyNetworkVariable = variable;
  point->Dialect = dialect;
  point->Relative = row.relative;
  if (row.separator == ",") point->MostFields = kSetpoints;
  return point;
}

PointList::PointList(const lns::Collection<lns::NetworkVariable>& variables,
                     const std::shared_ptr<lns::Dialect>& dialect) {
  for (const PointRow& row : kPoints)
    points_.push_back({row.key, MakePoint(row, Find(variables, std::string(row.variable)), dialect)});
}

bool PointList::IsReadIn(int display_units) const {
  const auto is_read = [=](const Entry& entry) { return entry.point->IsReadIn(display_units); };
  return !points_.empty() && std::ranges::all_of(points_, is_read);
}

std::vector<CNvCpTable::Reading> PointList::Held() const {
  std::vector<CNvCpTable::Reading> held;
  for (const Entry& entry : points_) held.push_back(entry.point->Held());
  return held;
}

void PointList::PutBack(std::vector<CNvCpTable::Reading> held) const {
  for (std::size_t i = 0; i < points_.size(); ++i) points_[i].point->PutBack(std::move(held.at(i)));
}

CNvCpTable& PointList::Item(std::string_view key) const {
  for (const Entry& entry : points_)
    if (entry.key == key) return *entry.point;
  throw platform::Error(5, "PointList", "Invalid procedure call or argument");
}

}  // namespace model
