#pragma once

#include <exception>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/program.h"
#include "ui/controls.h"
#include "ui/form.h"

namespace activity {

/// The message of a failure as LogError takes it: action and result, each brought to one line, with CR LF
/// between them, so that splitting it gives these two again, whatever the platform has put into its texts.
std::string ErrorMessage(const std::string& action, const std::string& result);

/// The activity log: every network operation with its time, action and result, in a window of its own. It
/// lives in memory as long as the process; rows are only appended or all cleared.
class fLog : public ui::Form {
 public:
  fLog(ui::Desktop& desktop, const platform::Program& program, platform::Files& files);

  /// Appends a row with a green mark.
  void LogCommand(const std::string& action, const std::string& results);

  /// Appends a row with a red mark. The message is the action and the result joined by CR LF, as ErrorMessage
  /// makes it; further lines are dropped, and a message without a line break leaves both columns empty and
  /// shows only time and mark. Deliberate.
  void LogError(const std::string& message);

  /// Removes all rows without asking.
  void Clear() {
    lstActivity.Clear();
    subject = 0;
  }

  /// Whose the last row is, as whoever has logged it has said; 0 for nobody's.
  int subject = 0;

  ui::ImageList ImageList1{{"Green", ui::ImageList::Picture::GreenMark},
                           {"Red", ui::ImageList::Picture::RedMark}};
  ui::ListView lstActivity{"lstActivity", {"Time", "Action", "Results"}};
  ui::Frame frmBottom{"frmBottom"};
  ui::Button cmdSave{"cmdSave", "&Save"};
  ui::Button cmdClear{"cmdClear", "Clea&r"};
  ui::Button cmdClose{"cmdClose", "&Close"};
  ui::CheckBox cbOpenOnError{"cbOpenOnError", "Show on error"};

 protected:
  ui::FormWindow::Size FirstSize(ui::FormWindow::Size best) override;
  bool OnQueryUnload(ui::CloseReason reason) override;
  void OnHelp() override;

 private:
  void Append(ui::ListView::Icon mark, const std::string& action, const std::string& results);
  std::vector<ui::Spot> PlaceControls(double outer_width, double outer_height);
  /// Asks where to, and writes one line a row: three quoted texts with commas between them, ended by CR LF.
  void Save();
  std::string RowsAsLines() const;
  void AskAndClear();

  const platform::Program& program_;
  platform::Files& files_;
};

/// Runs a step without which a procedure goes on. False if it failed; the log says what failed and, if it has
/// a subject, for which. A subject that takes time to name is a function, which is called only then.
template <class Subject, class Step>
bool LogAndGoOn(fLog& log, const std::string& action, const Subject& subject, Step&& step) {
  try {
    std::forward<Step>(step)();
    return true;
  } catch (const std::exception& failure) {
    std::string name;
    if constexpr (std::is_invocable_v<Subject>)
      name = subject();
    else
      name = subject;
    log.LogError(ErrorMessage(action, name.empty() ? failure.what() : name + ": " + failure.what()));
    return false;
  }
}

}  // namespace activity
