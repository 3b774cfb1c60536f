#pragma once

#include <cstddef>
#include <string>

#include "qm5r/computer.h"

namespace qm5r {

/// One line on the error output that counts the devices, with the name of the current one and the time left.
/// It is erased at the end, and before other output.
class Progress {
 public:
  Progress(Computer& computer, std::size_t total);
  ~Progress() { Erase(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Show(const std::string& name);
  void Erase();

 private:
  Computer& computer_;
  std::size_t total_;
  std::size_t done_ = 0;
  double begin_;
  bool is_shown_ = false;
};

}  // namespace qm5r
