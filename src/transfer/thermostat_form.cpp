#include "transfer/thermostat_form.h"

#include <algorithm>
#include <utility>

#include "startup/identity.h"
#include "text/strings.h"

namespace transfer {

fThermostats::fThermostats(const session::Services& services, std::vector<std::string> paths)
    : Form(services.desktop, "fThermostats", ui::BorderStyle::Sizable),
      services_(services),
      paths_(std::move(paths)) {
  using ui::Box;
  SetCaption("Compare with thermostat");
  txtFind.SetAccessibleName("Find");
  txtFind.SetToolTip("Lists only the thermostats whose path contains this text.");
  txtFind.on_change = [this] { List(); };
  lstThermostats.SetAccessibleName("Thermostats");
  lstThermostats.on_select = [this] { cmdOk.SetEnabled(Meant().has_value()); };
  lstThermostats.on_double_click = [this] { Choose(); };
  lstThermostats.on_copy = [this](const std::string& text) { this->desktop().CopyText(text); };
  cmdOk.SetToolTip("Compares with the selected thermostat, or with the only one in the list.");
  cmdCancel.SetToolTip("Closes the list. Nothing is compared.");
  cmdOk.on_click = [this] { Choose(); };
  cmdCancel.on_click = [this] { Hide(); };
  default_button = &cmdOk;
  cancel_button = &cmdCancel;
  SetLayout(
      Box::Column({Box::Row({Box::Leaf(lblFind), Box::Leaf(txtFind).StretchWidth()}).StretchWidth(),
                   Box::Leaf(lstThermostats).Stretch(),
                   Box::Row({Box{}.StretchWidth(), Box::Leaf(cmdOk), Box::Leaf(cmdCancel)}).StretchWidth()})
          .Stretch());
  List();
}

ui::FormWindow::Size fThermostats::FirstSize(ui::FormWindow::Size best) {
  constexpr double kWidth = 9000, kHeight = 6500;
  return {std::max(best.width, kWidth), std::max(best.height, kHeight)};
}

void fThermostats::List() {
  lstThermostats.Clear();
  listed_.clear();
  const std::string wanted = text::ToUpper(txtFind.Text());
  for (std::size_t i = 0; i < paths_.size(); ++i) {
    if (text::ToUpper(paths_[i]).find(wanted) == std::string::npos) continue;
    listed_.push_back(i);
    lstThermostats.Append({ui::ListView::Icon::None, {paths_[i]}});
  }
  cmdOk.SetEnabled(Meant().has_value());
}

std::optional<std::size_t> fThermostats::Meant() const {
  return listed_.size() == 1 ? 0 : lstThermostats.Selected();
}

void fThermostats::Choose() {
  const auto row = Meant();
  if (!row) return;
  chosen_ = listed_.at(*row);
  Hide();
}

void fThermostats::OnHelp() {
  ShowHelp(startup::HelpFile(services_.program), startup::kSettingsTopic, Caption());
}

}  // namespace transfer
