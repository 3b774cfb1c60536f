#pragma once

#include <optional>
#include <span>
#include <string>

namespace director {

/// A message box as its reader finds it.
struct Box {
  std::string title;
  std::string text;
  /// The commands of its buttons, as Windows numbers them: 1 OK, 2 Cancel, 6 Yes, 7 No.
  std::span<const int> buttons;

  bool IsQuestion() const;
  /// The button that the answer presses. A message is agreed to; what can only be chosen or cancelled, as a
  /// file, is cancelled.
  int ButtonFor(bool yes) const;
};

/// What the user reads about a box that waits for him, or, with an answer, about one that the director deals
/// with.
std::string Report(const Box& box, std::optional<bool> answer);

}  // namespace director
