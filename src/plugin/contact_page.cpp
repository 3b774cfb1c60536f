#include "plugin/contact_page.h"

namespace plugin {

std::string ContactPageAddress(const platform::Program& program) {
  return "res://" + program.Path() + "/about.htm";
}

std::string ContactPageText() {
  return
#include "contact_page_text.inc"
      ;
}

}  // namespace plugin
