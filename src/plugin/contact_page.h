#pragma once

#include <string>

#include "platform/program.h"

/// The page about the program: about.htm, a resource of the executable.
namespace plugin {

/// The page's address for a web browser.
std::string ContactPageAddress(const platform::Program& program);

/// What the page says, as lines of plain text; an empty line between its paragraphs.
std::string ContactPageText();

}  // namespace plugin
