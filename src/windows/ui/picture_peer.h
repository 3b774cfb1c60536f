#pragma once

#include "windows/ui/control_peer.h"
#include "windows/ui/gdi.h"

namespace windows {

/// A bitmap on the window's background, which shows through where the bitmap is transparent. A program
/// without the bitmap shows nothing in its place.
class PicturePeer final : public ControlPeer {
 public:
  PicturePeer(PeerHost& host, Surface& parent, ui::Picture& picture);
  void Rescale() override;
  ui::Extent PreferredSize() const override;
  void Draw(const DRAWITEMSTRUCT& item) override;

 private:
  ui::Extent size_;
  OwnedBitmap scaled_;
};

}  // namespace windows
