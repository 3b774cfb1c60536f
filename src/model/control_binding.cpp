#include "model/control_binding.h"

#include <utility>

#include "model/catalogue.h"
#include "platform/error.h"
#include "text/numbers.h"

namespace model {
namespace {

[[noreturn]] void ThrowSubscript(const std::string& detail) {
  throw platform::Error(9, "CNvCtrlTable", "Subscript out of range: " + detail);
}

std::size_t UnitIndex(int units) {
  if (units != 0 && units != 1) ThrowSubscript("there is no unit system " + std::to_string(units));
  return static_cast<std::size_t>(units);
}

double LimitOf(const std::string& text) {
  const auto number = text::ParseNumber(text);
  if (!number) throw platform::Error(13, "CNvCtrlTable", "Type mismatch");
  return *number;
}

void SetLimits(CNvCtrlTable& binding, const CatalogueLimits& limits) {
  binding.SetMinLimit(0, text::ShortestText(limits.si_min));
  binding.SetMaxLimit(0, text::ShortestText(limits.si_max));
  binding.SetMinLimit(1, text::ShortestText(limits.us_min));
  binding.SetMaxLimit(1, text::ShortestText(limits.us_max));
}

ui::Control* ControlOf(const CatalogueRow& row, const ConfigurationScreen& screen) {
  ui::Control* control = screen.Find(row.control);
  if (!control && row.control.array != ScreenArray::None)
    throw platform::Error(340, "Catalogue",
                          "Control array element " + std::to_string(row.control.index) + " doesn't exist");
  return control;
}

}  // namespace

std::string CNvCtrlTable::MaxLimit(int units) const { return text::ShortestText(upper_[UnitIndex(units)]); }
void CNvCtrlTable::SetMaxLimit(int units, const std::string& text) {
  upper_[UnitIndex(units)] = LimitOf(text);
}
std::string CNvCtrlTable::MinLimit(int units) const { return text::ShortestText(lower_[UnitIndex(units)]); }
void CNvCtrlTable::SetMinLimit(int units, const std::string& text) {
  lower_[UnitIndex(units)] = LimitOf(text);
}

std::size_t CNvCtrlTable::Place() const {
  if (ItemArrayIndex < 0 || static_cast<std::size_t>(ItemArrayIndex) >= NvCpTable->NvAsArray.size())
    ThrowSubscript(NvCpTable->Name + " has no value number " + std::to_string(ItemArrayIndex + 1) + " for " +
                   Name);
  return static_cast<std::size_t>(ItemArrayIndex);
}

std::string CNvCtrlTable::Value() const { return Rounded(NvCpTable->NvAsArray[Place()]); }
std::string CNvCtrlTable::KnownValue() const { return Rounded(NvCpTable->KnownFields()[Place()]); }

std::string CNvCtrlTable::Rounded(const std::string& field) const {
  return RoundValue ? RoundedForDisplay(field, Ceiling) : field;
}

void CNvCtrlTable::SetValue(const std::string& text) {
  std::string& field = NvCpTable->NvAsArray[Place()];
  const std::string& separator = NvCpTable->Separator;
  if (!separator.empty() && text.find(separator) != std::string::npos)
    throw platform::Error(13, "CNvCtrlTable",
                          "'" + text + "' cannot be stored in " + NvCpTable->Name +
                              ": it contains the character that separates its values");
  field = text;
  NvCpTable->ValueAsChanges = true;
}

BindingList MakeBindings(const PointList& points, const ConfigurationScreen& screen) {
  BindingList bindings;
  for (const CatalogueRow& row : Catalogue()) {
    CNvCtrlTable binding;
    binding.Name = row.name;
    binding.Description = row.description;
    binding.TheControl = ControlOf(row, screen);
    binding.Typee = "CP";
    binding.ItemArrayIndex = static_cast<std::int16_t>(row.index);
    binding.NvCpTable = &points.Item(row.point);
    binding.RoundValue = row.round_step != 0;
    binding.Ceiling = row.round_step;
    binding.OffsetValue = row.offset_value;
    if (row.limits) SetLimits(binding, *row.limits);
    binding.MonitorTag = static_cast<std::int32_t>(bindings.size()) + 1;
    bindings.push_back(std::move(binding));
  }
  return bindings;
}

}  // namespace model
