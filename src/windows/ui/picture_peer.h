#pragma once

#include <span>

#include "windows/ui/native_peer.h"
#include "windows/ui/theme.h"

namespace windows {

/// The small pictures of the program, described as shapes and drawn at any size with smooth edges.
enum class Picture { Help, List, GreenMark, RedMark, Edit, Folder };

/// `size` is the edge of the square, in pixels.
OwnedIcon DrawPicture(Picture picture, int size);
/// An image list of these pictures, in this order.
OwnedImages DrawPictures(std::span<const Picture> pictures, int size);

}  // namespace windows
