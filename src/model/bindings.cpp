#include "model/bindings.h"

#include <string>
#include <utility>

#include "model/catalogue.h"
#include "platform/error.h"
#include "text/numbers.h"

namespace model {
namespace {

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
