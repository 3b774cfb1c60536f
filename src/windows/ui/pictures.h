#pragma once

#include "windows/ui/gdi.h"

namespace windows {

/// The small pictures of the program. They are described as shapes and drawn for the size asked for, with
/// smooth edges.
enum class Picture { Help, List, GreenMark, RedMark };

/// The size is the edge of the square, in pixels.
OwnedIcon DrawPicture(Picture picture, int size);

}  // namespace windows
