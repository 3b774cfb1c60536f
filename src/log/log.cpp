#include "log/log.h"

#include <utility>
#include <vector>

#include "text/strings.h"

namespace activity {

fLog::fLog(ui::Desktop& desktop, const platform::Program& program)
    : Form(desktop, "fLog", ui::BorderStyle::Sizable), program_(program) {
  SetCaption("Network activity logging");
  cmdClose.on_click = [this] { Hide(); };
  SetLayout(ui::Box::Column({ui::Box::Leaf(lstActivity).Stretch()}).Stretch());
}

void fLog::LogCommand(const std::string& action, const std::string& results) {
  Load();
  lstActivity.Append({ui::ListView::Icon::Green, {program_.TimeOfDay(), action, results}});
}

void fLog::LogError(const std::string& message) {
  const std::vector<std::string> parts = text::Split(message, "\r\n");
  const bool has_result = parts.size() >= 2;
  Load();
  lstActivity.Append({ui::ListView::Icon::Red,
                      {program_.TimeOfDay(), has_result ? parts[0] : "", has_result ? parts[1] : ""}});
  if (cbOpenOnError.Checked()) Show();
}

bool fLog::OnQueryUnload(ui::CloseReason reason) {
  if (reason != ui::CloseReason::User) return true;
  Hide();
  return false;
}

}  // namespace activity
