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

/// A failure's message for LogError: action and result, each on one line, separated by CR LF, so that line
/// breaks in the platform's texts cannot split it.
std::string ErrorMessage(const std::string& action, const std::string& result);

/// The activity log: a window that lists every network operation with its time, action and result. It is only
/// in memory; rows can be appended or all cleared.
class fLog : public ui::Form {
 public:
  fLog(ui::Desktop& desktop, const platform::Program& program, platform::Files& files);

  /// Appends a row with a green mark.
  void LogCommand(const std::string& action, const std::string& results);

  /// Appends a row with a red mark for a message from ErrorMessage. Deliberately, further lines are dropped,
  /// and a message without a line break shows only time and mark.
  void LogError(const std::string& message);

  /// Removes all rows without asking.
  void Clear() {
    lstActivity.Clear();
    subject = 0;
  }

  /// The subject of the last row, numbered by its writer; 0 for none.
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
  /// Asks for a file and writes each row as a line: three quoted texts separated by commas, then CR LF.
  void Save();
  std::string RowsAsCsv() const;
  void AskAndClear();

  const platform::Program& program_;
  platform::Files& files_;
};

/// Runs an optional step. If it fails, returns false and logs the failure with its subject, if any. A subject
/// that takes time to name can be a function, called only on failure.
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
