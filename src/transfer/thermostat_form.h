#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session/services.h"
#include "ui/controls.h"
#include "ui/form.h"

namespace transfer {

/// Asks for one of the thermostats of the network, by path.
class fThermostats : public ui::Form {
 public:
  fThermostats(const session::Services& services, std::vector<std::string> paths);

  /// The position of the path that the user chose; nothing if none.
  std::optional<std::size_t> Chosen() const { return chosen_; }

  ui::Label lblFind{"lblFind", "&Find:"};
  ui::TextField txtFind{"txtFind"};
  ui::ListView lstThermostats{"lstThermostats", {"Thermostat"}};
  ui::Button cmdOk{"cmdOk", "OK"};
  ui::Button cmdCancel{"cmdCancel", "Cancel"};

 protected:
  ui::FormWindow::Size FirstSize(ui::FormWindow::Size best) override;
  void OnHelp() override;

 private:
  /// Lists the paths that contain the text to find.
  void List();
  /// The selected row, or the only one.
  std::optional<std::size_t> Meant() const;
  void Choose();

  const session::Services& services_;
  const std::vector<std::string> paths_;
  std::vector<std::size_t> listed_;  // positions in paths_
  std::optional<std::size_t> chosen_;
};

}  // namespace transfer
