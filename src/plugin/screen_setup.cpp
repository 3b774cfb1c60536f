#include "plugin/screen_setup.h"

#include <algorithm>
#include <span>

namespace plugin {
namespace {

using model::ControlRef;

/// The fields that a model does not have. No model lacks any today; a row is added for one that does.
struct ModelRow {
  int model_number;
  std::span<const ControlRef> missing;
};
constexpr std::span<const ModelRow> kModels{};

bool HasField(int model_number, ControlRef field) {
  for (const ModelRow& row : kModels)
    if (row.model_number == model_number) return std::ranges::find(row.missing, field) == row.missing.end();
  return true;
}

}  // namespace

void EnableFieldsOfModel(model::ConfigurationScreen& screen, int model_number) {
  for (int i = 0; i < model::ConfigurationScreen::kTextFieldCount; ++i)
    if (ui::TextField* field = screen.txtNvi(i)) field->SetEnabled(HasField(model_number, model::txtNvi(i)));
  for (int i = 0; i < model::kChoiceListCount; ++i)
    screen.cbNvi(i)->SetEnabled(HasField(model_number, model::cbNvi(i)));
}

}  // namespace plugin
