#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "model/screen_layout.h"

/// The configurable fields of the device: which field of which point each control edits, how it is rounded
/// for display, and its limits in SI and US units.
namespace model {

struct CatalogueLimits {
  double si_min, si_max, us_min, us_max;
};

struct CatalogueRow {
  std::string_view name;
  std::string_view description;
  ControlRef control;
  std::string_view point;
  int index;
  /// The display rounding step; 0 for none.
  double round_step = 0;
  bool offset_value = false;
  std::optional<CatalogueLimits> limits = std::nullopt;
};

std::span<const CatalogueRow> Catalogue();

}  // namespace model
