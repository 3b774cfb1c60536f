#pragma once

#include <string>
#include <vector>

#include "editing/field_editing.h"
#include "session/services.h"
#include "transfer/review.h"
#include "ui/controls.h"
#include "ui/form.h"

namespace transfer {

/// Lists the settings of the device on the screen beside those of a file or another thermostat. With ticks it
/// asks which texts to enter; without them it only shows.
class fReview : public ui::Form {
 public:
  /// `other` heads the column of the other values: "File". The rows have ticks, or none has.
  fReview(const session::Services& services, std::string caption, const std::string& heading,
          const std::string& other, std::vector<ReviewRow> rows);

  /// The user chose to enter the ticked texts.
  bool IsAccepted() const { return accepted_; }
  std::vector<editing::FieldEditing::Entry> Ticked() const;

  ui::Label lblHeading{"lblHeading"}, lblCounts{"lblCounts"};
  ui::CheckBox cbDifferences{"cbDifferences", "Only &differences"};
  ui::ListView lstFields;
  ui::Button cmdAll{"cmdAll", "Tick &all"};
  ui::Button cmdNone{"cmdNone", "Tick &none"};
  ui::Button cmdSave{"cmdSave", "&Save..."};
  ui::Button cmdOk{"cmdOk", "OK"};
  ui::Button cmdCancel{"cmdCancel", "Cancel"};

 protected:
  ui::FormWindow::Size FirstSize(ui::FormWindow::Size best) override;
  void OnHelp() override;

 private:
  bool HasTicks() const;
  /// The rows that the list shows.
  std::vector<ReviewRow> Listed() const;
  void List();
  void ShowCounts();
  void TickAll(bool tick);
  void Save();

  const session::Services& services_;
  std::vector<ReviewRow> rows_;
  std::vector<std::size_t> listed_;  // positions in rows_
  bool accepted_ = false;
};

}  // namespace transfer
