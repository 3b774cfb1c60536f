#include "qm5r/progress.h"

#include <cmath>
#include <ostream>
#include <utility>

#include "text/strings.h"

namespace qm5r {
namespace {

/// The line must not wrap in a window of 80 columns.
constexpr std::size_t kLongestName = 48;
const std::string kEraseLine = '\r' + std::string(79, ' ') + '\r';

/// "2:05"
std::string Clock(double seconds) {
  const long whole = std::lround(seconds);
  const std::string rest = std::to_string(whole % 60);
  return std::to_string(whole / 60) + (rest.size() == 1 ? ":0" : ":") + rest;
}

/// The end of a path says which device it is.
std::string EndOf(const std::string& name) {
  if (name.size() <= kLongestName) return name;
  std::size_t begin = name.size() - kLongestName;
  while ((name[begin] & 0xC0) == 0x80) ++begin;  // within a character
  return "..." + name.substr(begin);
}

}  // namespace

Progress::Progress(Computer& computer, std::size_t total)
    : computer_(computer), total_(total), begin_(computer.seconds()) {}

void Progress::Show(const std::string& name) {
  if (!computer_.shows_progress) return;
  std::string line = std::to_string(++done_) + " of " + std::to_string(total_) + "  " + EndOf(name);
  if (done_ > 1) {
    const double each = (computer_.seconds() - begin_) / static_cast<double>(done_ - 1);
    line += "  " + Clock(each * static_cast<double>(total_ - done_ + 1)) + " left";
  }
  Erase();
  computer_.errors << line << std::flush;
  is_shown_ = true;
}

void Progress::Erase() {
  if (std::exchange(is_shown_, false)) computer_.errors << kEraseLine << std::flush;
}

}  // namespace qm5r
