#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

/// The rules of editing as pure functions: the range of a field, how a value on a limit is stored, and how
/// setpoints affect each other. Values are the texts of fields, all in the units in force.
namespace model {

/// The limits of a field, as texts. 0 and 0 mean no limits.
struct Range {
  std::string lowest;
  std::string highest;
  /// A value exactly on a limit is stored slightly inside it.
  bool offset_value = false;
};

/// The nearest multiple of the step, ties to even; "0" for a text that is no number.
std::string RoundedForDisplay(const std::string& text, double step);

/// The limit that the number of a text exceeds; nothing if it exceeds none.
enum class Limit { Maximum, Minimum };
std::optional<Limit> LimitExceeded(const std::string& text, const Range& range);

/// The text stored for a text within its range. Only a text equal to the limit's text is stored inside it:
/// "32.0" is not "32". The offset is 0.05 in units 0 and 0.025 in any others.
std::string StoredText(const std::string& text, const Range& range, int units);

/// A relation between two fields txtNvi(i), checked when one of them or their dead band is left. `repaired`
/// is adjusted to `against`.
struct CrossRule {
  enum class Relation { DeadBandAbove, DeadBandBelow, AtMost, AtLeast };
  int left;
  int repaired;
  int against;
  Relation relation;

  bool IsDeadBand() const {
    return relation == Relation::DeadBandAbove || relation == Relation::DeadBandBelow;
  }
};

/// The field txtNvi(i) of the dead band.
inline constexpr int kDeadBandField = 16;

/// All rules: for each pair of fields one for either field that is left.
std::span<const CrossRule> CrossRules();

/// The rules for a field that is left, in the order in which they are applied.
std::span<const CrossRule> CrossRulesOf(int left);

/// The new text of the adjusted field; nothing if it has more digits than computed texts have.
struct Repair {
  std::optional<std::string> text;
};
/// Nothing if the rule holds. Compares numbers rounded to 6 decimals, so equality is never a violation; a
/// text that does not begin with a number counts as 0.
std::optional<Repair> RepairOf(const CrossRule& rule, const std::function<std::string(int)>& text_of);

}  // namespace model
