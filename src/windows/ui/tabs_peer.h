#pragma once

#include <memory>
#include <vector>

#include "windows/ui/control_peer.h"
#include "windows/ui/surface.h"

namespace windows {

/// A tab control with one window for each page, of which one is shown.
class TabsPeer final : public ControlPeer {
 public:
  TabsPeer(PeerHost& host, Surface& parent, ui::Tabs& tabs);
  ~TabsPeer() override;

  Surface& page(std::size_t index) const { return *pages_.at(index); }
  ui::Insets TabInsets() const;

  void Rescale() override;
  ui::Extent PreferredSize() const override;
  void Place(const ui::Rectangle& rectangle, HDWP& batch) override;
  void Update(ui::Aspect aspect) override;
  LRESULT Notify(NMHDR& header) override;

 private:
  ui::Tabs& tabs() const { return static_cast<ui::Tabs&>(control()); }
  void ShowPage();

  std::vector<std::unique_ptr<Surface>> pages_;
};

}  // namespace windows
