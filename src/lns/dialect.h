#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "lns/object_model.h"

namespace lns {

/// How one object server differs from the usual in reading and writing network variables. Found by trying,
/// and remembered. Texts on this side always have "." as decimal sign and the separators of their points.
class Dialect {
 public:
  /// `user_type_owner` begins the fully qualified names of user types, for example "#8000D30000000000[3].";
  /// if it is empty, they have no such names.
  explicit Dialect(std::string user_type_owner = {}) : user_type_owner_(std::move(user_type_owner)) {}

  /// Sets the access option if the object server has it; it is documented only for data points.
  void SetAccessOption(const NetworkVariable& variable, std::int32_t option);

  /// Chooses the format, given with or without "#SI" or "#US" before its name. Remembers the form that the
  /// object server accepts. If it accepts none, throws its error about the given form.
  void SetFormat(const NetworkVariable& variable, const std::string& format);

  /// Reads a value with the decimal sign and list separator of the computer that formatted it. Throws 18035
  /// if the text is ambiguous.
  std::string Value(const NetworkVariable& variable, const std::string& separator);

  /// Writes a value with the signs it was read with. Throws 18035 for a fraction if no value read has shown
  /// the decimal sign, or if that sign also separates the values.
  void SetValue(const NetworkVariable& variable, const std::string& text, const std::string& separator);

  /// Records another difference of the object server.
  void Note(const std::string& difference);
  /// The differences found since the last call, for the log; empty if there are none.
  std::string TakeFindings();

 private:
  std::vector<std::string> Forms(const std::string& format) const;

  std::string user_type_owner_;
  bool has_access_option_ = true;
  std::map<std::string, std::string> accepted_formats_;
  char decimal_sign_ = 0;                          // 0 until one is seen
  std::map<std::string, std::string> separators_;  // those seen, by the points' separators
  std::set<std::string> noted_;
  std::vector<std::string> findings_;  // not yet taken
};

}  // namespace lns
