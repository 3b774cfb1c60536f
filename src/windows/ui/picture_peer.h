#pragma once

#include <span>

#include "windows/ui/native_peer.h"
#include "windows/ui/theme.h"

namespace windows {

/// The small pictures of the program. They are described as shapes and drawn for the size asked for, with
/// smooth edges.
enum class Picture { Help, List, GreenMark, RedMark, Edit, Blank };

/// The size is the edge of the square, in pixels.
OwnedIcon DrawPicture(Picture picture, int size);
/// An image list of these pictures, in this order.
OwnedImages DrawPictures(std::span<const Picture> pictures, int size);

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
