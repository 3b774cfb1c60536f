// What the buttons and the unit choice of the main window do with the device on the screen.

#include "editing/applying.h"
#include "plugin/display_settings.h"
#include "plugin/field_tips.h"
#include "plugin/main_form.h"
#include "plugin/screen_setup.h"
#include "text/numbers.h"

namespace plugin {

void fMain::ConnectEditing() {
  cmdApply.on_click = [this] { Run([this] { Apply(); }); };
  cmdCancel.on_click = [this] { Run([this] { editing::Cancel(passes(), pending_); }); };
  cmdRefresh.on_click = [this] { Run([this] { Refresh(); }); };
  cmdDebug.on_click = [this] { SetUpScreen(text::LeadingWholeNumber(txtDebug.Text())); };
  for (std::size_t i = 0; i < obUnits.size(); ++i)
    obUnits[i].on_click = [this, units = static_cast<std::int16_t>(i)] {
      Run([this, units] { SwitchUnits(units); });
      ShowUnits();
    };
  editing::ConnectLists(screen, pending_, [this] { Run([this] { Apply(); }); });
}

/// One operation at a time: what comes in while one runs is not started.
void fMain::Run(const std::function<void()>& command) {
  if (with_.session.Busy()) return;
  {
    const session::Operation running(with_.session);
    command();
  }
  EndIfUnused();
}

void fMain::Apply() {
  if (!complete_read_ && pending_.Raised()) {
    editing::ReportFailure(
        passes(), "Applying the changes",
        "The device has not been read completely. Refresh all values before applying changes.");
    return;
  }
  editing::Apply(passes(), pending_, with_.session.DisplayUnits);
}

/// A device whose preparation failed before it had points is prepared again: reading none of them would pass
/// for a complete read, and an apply for a written one.
void fMain::Refresh() {
  if (current_device_ && loaded_->bindings.empty())
    ConfigureCurrentDevice();
  else
    ReadAndShow();
}

bool fMain::ReadAndShow() {
  if (!editing::ReadAllPoints(passes(), with_.session.DisplayUnits)) return false;
  complete_read_ = !loaded_->bindings.empty();
  try {
    editing::ShowAllValues(passes());
  } catch (const platform::Error& error) {
    editing::ReportFailure(passes(), "Showing the values", error.description());
  }
  return true;
}

void fMain::SwitchUnits(std::int16_t units) {
  session::Session& session = with_.session;
  if (units == session.DisplayUnits) return;
  const editing::Passes now = passes();
  if (pending_.Raised()) {
    const ui::Answer answer =
        desktop().ShowMessage({"This action will discard all changes\r\n\r\nProceed and lose all changes ?",
                               "Warning", ui::Icon::Exclamation, ui::Buttons::OkCancel});
    if (answer != ui::Answer::Ok || now.device->dropped) return;
  }
  editing::Cancel(now, pending_);
  const std::int16_t former = session.DisplayUnits;
  session.DisplayUnits = units;
  ShowUnits();
  if (ReadAndShow()) return;
  // A device that took the screen meanwhile has been read in the new units.
  if (loaded_ != now.device) return;
  // All or nothing: no text may be shown, clamped or written in other units than it was read in.
  session.DisplayUnits = former;
  ShowUnits();
  if (now.device->dropped) return;
  if (complete_read_) complete_read_ = editing::ReadBackIn(now, former);
}

void fMain::ShowUnits() {
  const int units = with_.session.DisplayUnits;
  for (std::size_t i = 0; i < obUnits.size(); ++i) obUnits[i].SetSelected(static_cast<int>(i) == units);
  for (const auto& label : screen.txtTempUnits()) label->SetText(TemperatureUnit(units));
  ShowFieldTips(screen, units);
}

void fMain::SetUpScreen(int model_number) {
  EnableFieldsOfModel(screen, model_number);
  const bool debug = with_.session.DebugMode == 1;
  cmdDebug.SetVisible(debug);
  txtDebug.SetVisible(debug);
}

}  // namespace plugin
