#pragma once

#include <string>

#include "platform/program.h"

/// The page with which the program tells about itself: about.htm, a resource of the executable.
namespace plugin {

/// Where a web browser finds the page.
std::string ContactPageAddress(const platform::Program& program);

/// What the page says, as lines of plain text; an empty line between its paragraphs.
std::string ContactPageText();

}  // namespace plugin
