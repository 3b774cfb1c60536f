#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace text {

/// A text in which "*" stands for any characters, "/" included.
class Pattern {
 public:
  /// "\*" is an asterisk, unless a backslash is a character as any other, as in names of files.
  enum class Backslash { Escapes, IsPlain };
  explicit Pattern(std::string_view text, Backslash backslash = Backslash::Escapes);

  bool Matches(std::string_view text) const;
  /// Some text that begins like this matches.
  bool MayBegin(std::string_view beginning) const;

  bool HasWildcard() const { return pieces_.size() > 1; }
  /// The text before the first "*": all of it without one.
  const std::string& Beginning() const { return pieces_.front(); }

 private:
  /// The texts between the asterisks; never empty.
  std::vector<std::string> pieces_;
};

}  // namespace text
