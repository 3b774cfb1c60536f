#include "log/log.h"

#include <algorithm>

#include "platform/error.h"
#include "startup/identity.h"
#include "text/strings.h"
#include "ui/saving.h"

namespace activity {
namespace {

// The window's geometry, in twips of its outer size.
constexpr double kBottomHeight = 1450;  // from the bottom frame's top to the window's lower edge
constexpr double kSideRoom = 300;
constexpr double kButtonStep = 1100;
constexpr double kButtonWidth = 1035;
constexpr double kButtonHeight = 375;
constexpr double kInset = 240;
constexpr double kLeft = 90;
constexpr double kFrameHeight = 780;

constexpr char kSeparator = ',';  // of the saved file

std::string OnOneLine(std::string text) {
  const auto breaks = [](char character) { return character == '\r' || character == '\n'; };
  const auto both = [&](char one, char other) { return breaks(one) && breaks(other); };
  text.erase(std::unique(text.begin(), text.end(), both), text.end());
  std::ranges::replace_if(text, breaks, ' ');
  return text;
}

}  // namespace

std::string ErrorMessage(const std::string& action, const std::string& result) {
  return OnOneLine(action) + "\r\n" + OnOneLine(result);
}

fLog::fLog(ui::Desktop& desktop, const platform::Program& program, platform::Files& files)
    : Form(desktop, "fLog", ui::BorderStyle::Sizable), program_(program), files_(files) {
  using ui::Box;
  SetCaption("Network activity logging");
  lstActivity.SetAccessibleName("Activity");
  lstActivity.small_icons = &ImageList1;
  lstActivity.follows_end = true;
  lstActivity.on_copy = [this](const std::string& rows) { this->desktop().CopyText(rows); };
  cmdSave.SetToolTip("Saves all rows as comma-separated values.");
  cmdClear.SetToolTip("Removes all rows.");
  cmdClose.SetToolTip("Hides this window. The rows stay.");
  cbOpenOnError.SetToolTip("Shows this window when an operation fails.");
  cancel_button = &cmdClose;
  cmdSave.on_click = [this] { Save(); };
  cmdClear.on_click = [this] { AskAndClear(); };
  cmdClose.on_click = [this] { Hide(); };
  constexpr double kLeastWidth = 7500, kLeastHeight = 4500;
  SetLayout(Box::Placed(
      {Box::Leaf(lstActivity), Box::Leaf(cbOpenOnError), Box::Leaf(cmdSave), Box::Leaf(cmdClear),
       Box::Leaf(cmdClose), Box::Leaf(frmBottom)},
      [this](double width, double height) { return PlaceControls(width, height); }, kLeastWidth,
      kLeastHeight));
}

ui::FormWindow::Size fLog::FirstSize(ui::FormWindow::Size) { return {12000, 6500}; }

std::vector<ui::Spot> fLog::PlaceControls(double outer_width, double outer_height) {
  const double frame_top = outer_height - kBottomHeight;
  const double width = outer_width - kSideRoom;
  const double close_left = width - kButtonStep;
  const auto button = [&](ui::Control& control, double left) {
    return ui::Spot{&control, kLeft + left, frame_top + kInset, kButtonWidth, kButtonHeight};
  };
  return {{&lstActivity, kLeft, 0, width, frame_top - 15},
          {&frmBottom, kLeft, frame_top, width, kFrameHeight},
          button(cmdClose, close_left),
          button(cmdClear, close_left - kButtonStep),
          button(cmdSave, close_left - 2 * kButtonStep),
          {&cbOpenOnError, kLeft + kInset, frame_top + kInset, 2400, kButtonHeight}};
}

void fLog::LogCommand(const std::string& action, const std::string& results) {
  Append(ui::ListView::Icon::Green, action, results);
}

void fLog::LogError(const std::string& message) {
  const std::vector<std::string> parts = text::Split(message, "\r\n");
  const bool has_result = parts.size() >= 2;
  Append(ui::ListView::Icon::Red, has_result ? parts[0] : "", has_result ? parts[1] : "");
  if (cbOpenOnError.Checked()) BringToFront();
}

void fLog::Append(ui::ListView::Icon mark, const std::string& action, const std::string& results) {
  // Without a display there is no window, but logging continues.
  platform::IgnoreFailure([this] { Load(); });
  subject = 0;
  lstActivity.Append({mark, {program_.TimeOfDay(), action, results}});
}

void fLog::Save() {
  try {
    // The blanks around the bars are deliberate.
    const ui::SaveDialog dialog{"Save As...", "ActivityLog", "*.csv",
                                "Comma separated values (*.csv) |*.csv | All Files (*.*) | *.*"};
    if (const auto path = ui::AskWhereToSave(desktop(), files_, dialog, startup::kProgramTitle))
      files_.Write(*path, RowsAsCsv());
  } catch (const std::exception& failure) {
    desktop().ShowMessage({failure.what(), startup::kProgramTitle, ui::Icon::Exclamation});
  }
}

/// Deliberately does not double quotes inside a text. Starts with a byte-order mark only if the text goes
/// beyond ASCII, because other programs need it then.
std::string fLog::RowsAsCsv() const {
  std::string lines;
  for (const ui::ListView::Row& row : lstActivity.Rows()) {
    for (std::size_t column = 0; column < 3; ++column) {
      if (column != 0) lines += kSeparator;
      lines += '"' + row.cells[column] + '"';
    }
    lines += "\r\n";
  }
  const bool plain =
      std::ranges::all_of(lines, [](char letter) { return static_cast<signed char>(letter) >= 0; });
  return plain ? lines : "\xEF\xBB\xBF" + lines;
}

void fLog::AskAndClear() {
  const ui::Answer answer =
      desktop().ShowMessage({"Clear Log file ?", startup::kProgramTitle, ui::Icon::Exclamation,
                             ui::Buttons::OkCancel, /*second_is_default=*/true});
  if (answer == ui::Answer::Ok) Clear();
}

void fLog::OnHelp() { ShowHelp(startup::HelpFile(program_), startup::kLogTopic, startup::kProgramTitle); }

bool fLog::OnQueryUnload(ui::CloseReason reason) {
  if (reason != ui::CloseReason::User) return true;
  Hide();
  return false;
}

}  // namespace activity
