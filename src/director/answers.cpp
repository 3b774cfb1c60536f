#include "director/answers.h"

#include <algorithm>

namespace director {
namespace {

constexpr int kOk = 1, kCancel = 2, kYes = 6, kNo = 7;

bool Has(const Box& box, int button) { return std::ranges::count(box.buttons, button) != 0; }

}  // namespace

bool Box::IsQuestion() const { return Has(*this, kYes); }

int Box::ButtonFor(bool yes) const {
  if (IsQuestion()) return yes ? kYes : kNo;
  return Has(*this, kCancel) && Has(*this, kOk) ? kCancel : kOk;
}

std::string Report(const Box& box, std::optional<bool> answer) {
  const std::string said = box.text.empty() ? box.title : box.text;
  std::string report =
      "director: the plug-in " + std::string(box.IsQuestion() ? "asks" : "says") + ": " + said;
  if (!answer)
    return report + "\n(It waits on its display. To answer it here, give --answer yes or --answer no.)\n";
  const int button = box.ButtonFor(*answer);
  return report +
         (button == kYes      ? " - yes"
          : button == kNo     ? " - no"
          : button == kCancel ? " - cancelled"
                              : "") +
         '\n';
}

}  // namespace director
