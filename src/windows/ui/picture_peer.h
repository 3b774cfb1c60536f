#pragma once

#include "windows/ui/gdi.h"
#include "windows/ui/native_peer.h"

namespace windows {

/// A bitmap on the window's background, which shows through where the bitmap is transparent. A program
/// without the bitmap shows nothing in its place.
class PicturePeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;
  ui::Extent PreferredSize() const override;
  void Draw(const DRAWITEMSTRUCT& item) override;

 protected:
  void MakeWindow() override;
  void Measure() override;
  void Rescale() override;

 private:
  ui::Extent size_, scaled_to_;
  OwnedBitmap scaled_;
};

}  // namespace windows
