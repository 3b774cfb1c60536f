#pragma once

#include <memory>
#include <vector>

#include "windows/ui/native_peer.h"
#include "windows/ui/surface.h"

namespace windows {

/// A tab control with one window per page. The content of a page is created when the page is first shown.
class TabsPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;
  ~TabsPeer() override;

  Surface& page(std::size_t index) const { return *pages_.at(index); }
  ui::Insets Insets() const override;
  void MakeFrontPage() const;

  ui::Extent PreferredSize() const override;
  LRESULT Notify(NMHDR& header) override;

 protected:
  void MakeWindow() override;
  void Rescale() override;
  void OnPlaced() override;
  void Show(ui::Aspect aspect) override;
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  ui::Tabs& tabs() const { return static_cast<ui::Tabs&>(control()); }
  void ShowPage();
  RECT PlaceOfTab(std::size_t index) const;
  RECT PlaceOfMark(std::size_t index) const;
  void PaintMarks(HDC dc) const;

  std::vector<std::unique_ptr<Surface>> pages_;
  OwnedIcon mark_;
};

}  // namespace windows
