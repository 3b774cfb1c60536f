#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

/// The rules of editing as functions of values: the range of a field, how a value on a limit is stored, and
/// what one setpoint means for another. Values are the texts that fields show, all in the units in force;
/// nothing here converts units, and nothing is shown.
namespace model {

/// The limits of a field, as texts. Limits of 0 and 0 are none.
struct Range {
  std::string lowest;
  std::string highest;
  /// A value exactly on a limit is stored a little inside it.
  bool offset_value = false;
};

/// The limit that the number of a text exceeds; nothing if it is within the limits or on them.
enum class Limit { Maximum, Minimum };
std::optional<Limit> LimitExceeded(const std::string& text, const Range& range);

/// What is stored for a text within its range. Only a text equal to the limit's text is stored inside it:
/// "32.0" is not "32". The offset is 0.05 in units 0 and 0.025 in any others.
std::string StoredText(const std::string& text, const Range& range, int units);

/// What holds between two fields txtNvi(i) when one of them, or their dead band, is left: the repaired field
/// follows the one that it is held against.
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

/// The rules of a field that is left, in the order in which they are kept.
std::span<const CrossRule> CrossRulesOf(int left);

/// How a violated rule is repaired: the new text of the repaired field, or nothing if that
/// number has more digits than computed texts have.
struct Repair {
  std::optional<std::string> text;
};
/// Nothing if the rule holds. Numbers are compared after rounding to 6 decimals, so that equality is never
/// a violation; a text that begins with no number counts as 0.
std::optional<Repair> RepairOf(const CrossRule& rule, const std::function<std::string(int)>& text_of);

}  // namespace model
