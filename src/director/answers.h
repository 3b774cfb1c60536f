#pragma once

#include <optional>
#include <span>
#include <string>

namespace director {

/// A message box.
struct Box {
  std::string title;
  std::string text;
  /// The commands of its buttons as in Windows: 1 OK, 2 Cancel, 6 Yes, 7 No.
  std::span<const int> buttons;

  bool IsQuestion() const;
  /// The button that the answer presses. Messages get OK; a dialog with OK and Cancel, such as one for a
  /// file, is cancelled.
  int ButtonFor(bool yes) const;
};

/// What the director prints about a box that waits for the user or, with an answer, that it answers itself.
std::string Report(const Box& box, std::optional<bool> answer);

}  // namespace director
