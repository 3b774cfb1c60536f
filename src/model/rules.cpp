#include "model/rules.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "text/numbers.h"

namespace model {
namespace {

enum Field : int {
  kOccupiedHeat = 0,
  kUnoccupiedHeat = 1,
  kHeatMax = 2,
  kOccupiedCool = 3,
  kUnoccupiedCool = 4,
  kCoolMin = 5,
  kDeadBand = kDeadBandField,
};

using enum CrossRule::Relation;

// Deliberately without the standby setpoints.
constexpr CrossRule kRules[] = {{kOccupiedHeat, kOccupiedCool, kOccupiedHeat, DeadBandAbove},
                                {kUnoccupiedHeat, kUnoccupiedCool, kUnoccupiedHeat, DeadBandAbove},
                                {kHeatMax, kOccupiedHeat, kHeatMax, AtMost},
                                {kHeatMax, kUnoccupiedHeat, kHeatMax, AtMost},
                                {kOccupiedCool, kOccupiedHeat, kOccupiedCool, DeadBandBelow},
                                {kUnoccupiedCool, kUnoccupiedHeat, kUnoccupiedCool, DeadBandBelow},
                                {kCoolMin, kOccupiedCool, kCoolMin, AtLeast},
                                {kCoolMin, kUnoccupiedCool, kCoolMin, AtLeast},
                                {kDeadBand, kOccupiedHeat, kOccupiedCool, DeadBandBelow},
                                {kDeadBand, kUnoccupiedHeat, kUnoccupiedCool, DeadBandBelow}};

// Deliberately not one converted into the other.
double OffsetStep(int units) { return units == 0 ? 0.05 : 0.025; }

double Rounded(double value) { return text::RoundToDecimals(value, 6); }

bool Holds(CrossRule::Relation relation, double value, double against, double band) {
  switch (relation) {
    case DeadBandAbove:
      return Rounded(value - against) >= Rounded(band);
    case DeadBandBelow:
      return Rounded(against - value) >= Rounded(band);
    case AtMost:
      return Rounded(value - against) <= 0;
    case AtLeast:
      return Rounded(value - against) >= 0;
  }
  return true;
}

}  // namespace

std::string RoundedForDisplay(const std::string& text, double step) {
  const auto number = text::ParseNumber(text);
  if (!number) return "0";
  return text::ComputedText(text::RoundHalfEven(*number / step) * step);
}

std::optional<Limit> LimitExceeded(const std::string& text, const Range& range) {
  if (range.lowest == "0" && range.highest == "0") return std::nullopt;
  const double number = text::LeadingNumber(text);
  if (number > text::LeadingNumber(range.highest)) return Limit::Maximum;
  if (number < text::LeadingNumber(range.lowest)) return Limit::Minimum;
  return std::nullopt;
}

std::string StoredText(const std::string& text, const Range& range, int units) {
  if (!range.offset_value) return text;
  if (text == range.highest) return text::ComputedText(text::LeadingNumber(text) - OffsetStep(units));
  if (text == range.lowest) return text::ComputedText(text::LeadingNumber(text) + OffsetStep(units));
  return text;
}

std::span<const CrossRule> CrossRules() { return kRules; }

std::span<const CrossRule> CrossRulesOf(int left) {
  const auto first = std::ranges::find(kRules, left, &CrossRule::left);
  const auto is_another = [left](const CrossRule& rule) { return rule.left != left; };
  return {first, std::find_if(first, std::end(kRules), is_another)};
}

std::optional<Repair> RepairOf(const CrossRule& rule, const std::function<std::string(int)>& text_of) {
  const auto number_of = [&](int field) { return text::LeadingNumber(text_of(field)); };
  const double against = number_of(rule.against), band = number_of(kDeadBand);
  if (Holds(rule.relation, number_of(rule.repaired), against, band)) return std::nullopt;
  if (!rule.IsDeadBand()) return Repair{text_of(rule.against)};
  const double wanted = rule.relation == DeadBandAbove ? against + band : against - band;
  static const double kTooLarge = std::pow(10.0, text::kMostComputedDigits);
  if (!(std::abs(wanted) < kTooLarge)) return Repair{};
  const std::string text = text::ComputedText(wanted);
  // With fewer digits it may violate the rule again, and the two fields would adjust each other forever.
  return Holds(rule.relation, text::LeadingNumber(text), against, band) ? Repair{text} : Repair{};
}

}  // namespace model
