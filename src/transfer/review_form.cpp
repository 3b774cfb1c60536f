#include "transfer/review_form.h"

#include <algorithm>
#include <utility>

#include "startup/identity.h"
#include "ui/saving.h"

namespace transfer {

fReview::fReview(const session::Services& services, std::string caption, const std::string& heading,
                 const std::string& other, std::vector<ReviewRow> rows)
    : Form(services.desktop, "fReview", ui::BorderStyle::Sizable),
      lstFields("lstFields", {"Page", "Field", "Thermostat", other, "Unit", "Result", "Remark"}),
      services_(services),
      rows_(std::move(rows)) {
  using ui::Box;
  SetCaption(std::move(caption));
  lblHeading.SetText(heading);
  lblHeading.shows_data = true;
  lblHeading.lines = 2;
  constexpr int kCountColumns = 45;
  lblCounts.columns = kCountColumns;
  cbDifferences.SetChecked(true);
  cbDifferences.SetToolTip("Leaves out the fields that are the same.");
  cbDifferences.on_click = [this] { List(); };
  lstFields.SetAccessibleName("Fields");
  lstFields.has_ticks = HasTicks();
  lstFields.on_tick = [this](std::size_t row) {
    rows_[listed_.at(row)].tick = lstFields.Rows()[row].tick;
    ShowCounts();
  };
  lstFields.on_copy = [this](const std::string& text) { this->desktop().CopyText(text); };
  cmdAll.SetToolTip("Ticks every field in the list but the corrections of another thermostat's sensors.");
  cmdNone.SetToolTip("Unticks every field in the list.");
  cmdSave.SetToolTip("Saves the list as comma-separated values.");
  cmdOk.SetToolTip("Enters the ticked values in their fields. Nothing is written before you apply them.");
  cmdAll.on_click = [this] { TickAll(true); };
  cmdNone.on_click = [this] { TickAll(false); };
  cmdSave.on_click = [this] { Save(); };
  cmdOk.on_click = [this] {
    accepted_ = true;
    Hide();
  };
  cmdCancel.on_click = [this] { Hide(); };
  cancel_button = &cmdCancel;
  cmdCancel.SetToolTip("Closes the list. No field changes.");
  if (HasTicks()) {
    default_button = &cmdOk;
  } else {
    for (ui::Button* button : {&cmdAll, &cmdNone, &cmdOk}) button->SetVisible(false);
    cmdCancel.SetText("Close");
  }
  SetLayout(
      Box::Column({Box::Leaf(lblHeading).StretchWidth(),
                   Box::Row({Box::Leaf(cbDifferences), Box::Leaf(lblCounts).StretchWidth()}).StretchWidth(),
                   Box::Leaf(lstFields).Stretch(),
                   Box::Row({Box::Leaf(cmdAll), Box::Leaf(cmdNone), Box::Leaf(cmdSave), Box{}.StretchWidth(),
                             Box::Leaf(cmdOk), Box::Leaf(cmdCancel)})
                       .StretchWidth()})
          .Stretch());
  List();
}

ui::FormWindow::Size fReview::FirstSize(ui::FormWindow::Size best) {
  constexpr double kWidth = 18000, kHeight = 7500;
  return {std::max(best.width, kWidth), std::max(best.height, kHeight)};
}

bool fReview::HasTicks() const {
  return std::ranges::any_of(rows_, [](const ReviewRow& row) { return row.tick.has_value(); });
}

void fReview::List() {
  lstFields.Clear();
  listed_.clear();
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const ReviewRow& row = rows_[i];
    if (cbDifferences.Checked() && !row.matters && !row.tick.value_or(false)) continue;
    listed_.push_back(i);
    lstFields.Append({ui::ListView::Icon::None,
                      {row.page, row.name, row.held, row.other, row.unit, row.result, row.remark},
                      row.tick});
  }
  ShowCounts();
}

void fReview::ShowCounts() {
  lblCounts.SetText(CountsOf(rows_));
  const bool any = std::ranges::any_of(rows_, [](const ReviewRow& row) { return row.tick.value_or(false); });
  cmdOk.SetEnabled(any);
}

void fReview::TickAll(bool tick) {
  for (const std::size_t row : listed_)
    if (rows_[row].tick) rows_[row].tick = tick && !rows_[row].is_of_another;
  List();
}

std::vector<editing::FieldEditing::Entry> fReview::Ticked() const {
  std::vector<editing::FieldEditing::Entry> entries;
  for (const ReviewRow& row : rows_)
    if (row.tick.value_or(false)) entries.push_back({row.field->row, row.other});
  return entries;
}

std::vector<ReviewRow> fReview::Listed() const {
  std::vector<ReviewRow> rows;
  for (const std::size_t row : listed_) rows.push_back(rows_[row]);
  return rows;
}

void fReview::Save() {
  try {
    const ui::SaveDialog dialog{"Save As...", "Comparison", "*.csv",
                                "Comma separated values (*.csv)|*.csv|All Files (*.*)|*.*"};
    if (const auto path = ui::AskWhereToSave(desktop(), services_.files, dialog, Caption()))
      services_.files.Write(*path, CsvOf(lstFields.Headers(), Listed()));
  } catch (const std::exception& failure) {
    desktop().ShowMessage({failure.what(), Caption(), ui::Icon::Exclamation});
  }
}

void fReview::OnHelp() { ShowHelp(startup::HelpFile(services_.program), startup::kSettingsTopic, Caption()); }

}  // namespace transfer
