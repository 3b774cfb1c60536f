#pragma once

#include <string>

#include "platform/program.h"

/// The contact page: about.htm, a resource of the executable.
namespace plugin {

/// The page's URL for a web browser.
std::string ContactPageAddress(const platform::Program& program);

/// The page as lines of plain text, with an empty line between paragraphs.
std::string ContactPageText();

}  // namespace plugin
