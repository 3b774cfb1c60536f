#pragma once

#include <array>
#include <string>
#include <vector>

#include "windows/ui/native_peer.h"

namespace windows {

/// A report list that asks the control for the rows it shows, so that a long list costs no more than a short
/// one. Each column is as wide as the widest text that it has held since it was empty.
class ListViewPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;

  ui::Extent PreferredSize() const override;
  LRESULT Notify(NMHDR& header) override;

 protected:
  void MakeWindow() override;
  void Rescale() override;
  void Show(ui::Aspect aspect) override;
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
  void CatchUp() override;

 private:
  const ui::ListView& list() const { return static_cast<const ui::ListView&>(control()); }
  void SelectAll() const;
  void Copy() const;
  void OfferMenu(LPARAM where) const;
  void MakeImages();
  int ImageOf(ui::ListView::Icon icon) const;
  void MakeColumns();
  void ForgetRows();
  void MeasureRows();
  /// `room` is what the text does not take of the column, for 96 dots per inch.
  void Widen(std::size_t column, const std::wstring& text, int room);
  void Fit(std::size_t column);

  struct Column {
    int width = 0;
    std::wstring widest;
    int room = 0;
  };
  std::size_t rows_measured_ = 0;
  std::vector<Column> columns_;
  std::vector<std::wstring> answered_;  // the texts last handed to the system, a column each
};

}  // namespace windows
