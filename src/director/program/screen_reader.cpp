#include "director/program/screen_reader.h"

#include <windows.h>

#include <commctrl.h>

#include <ostream>
#include <string>
#include <vector>

#include "windows/com/wide_text.h"

namespace director {
namespace {

bool PrintNothingYet(std::ostream&) { return false; }

}  // namespace

bool PrintScreen(std::ostream& out) { return PrintNothingYet(out); }

}  // namespace director
