#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "lns/object_model.h"

namespace lns {

/// How one object server wants network variables to be asked and written where it differs from the usual:
/// found out by asking, and remembered as long as it lives. Texts on this side always have "." as decimal
/// sign and the separators of their points.
class Dialect {
 public:
  /// User types get a fully qualified name that begins with this, as "#8000D30000000000[3].", where they need
  /// one; without it they have none.
  explicit Dialect(std::string user_type_owner = {}) : user_type_owner_(std::move(user_type_owner)) {}

  /// Sets the access option where the object server has one. Only data points are documented to.
  void SetAccessOption(const NetworkVariable& variable, std::int32_t option);

  /// Chooses the format, given with "#SI" or "#US" in front of its name or without. The form that the object
  /// server takes is remembered. Raises what it said to the given form where it takes none.
  void SetFormat(const NetworkVariable& variable, const std::string& format);

  /// Reads a value with the decimal sign and the list separator of whatever computer has formatted it. 18035
  /// where the text could mean two things.
  std::string Value(const NetworkVariable& variable, const std::string& separator);

  /// Writes a value with the signs in which it was read. 18035 where it has a fraction and no reading has
  /// shown the decimal sign, or that sign separates the values as well.
  void SetValue(const NetworkVariable& variable, const std::string& text, const std::string& separator);

  /// Something else in which the object server is different.
  void Note(const std::string& difference);
  /// What was found since the last time, for the log; empty where nothing was.
  std::string TakeFindings();

 private:
  std::vector<std::string> Forms(const std::string& format) const;

  std::string user_type_owner_;
  bool has_access_option_ = true;
  std::map<std::string, std::string> accepted_formats_;
  char decimal_sign_ = 0;                          // as long as none was seen
  std::map<std::string, std::string> separators_;  // those in use, by those of the points
  std::set<std::string> noted_;
  std::vector<std::string> findings_;  // noted and not yet taken
};

}  // namespace lns
