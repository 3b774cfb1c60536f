#include "ui/data_texts.h"

#include "ui/controls.h"

namespace ui {
namespace {

void Collect(const Box& box, std::vector<std::string>& texts) {
  const Control* const control = box.control;
  if (control && control->Visible()) {
    if (control->kind() == Control::Kind::Label && static_cast<const Label*>(control)->shows_data)
      texts.push_back(control->Text());
    if (control->kind() == Control::Kind::StatusBar)
      for (const std::string& panel : static_cast<const StatusBar*>(control)->Panels())
        texts.push_back(panel);
  }
  for (const Box& child : box.children) Collect(child, texts);
}

}  // namespace

std::vector<std::string> DataTexts(const Box& layout) {
  std::vector<std::string> texts;
  Collect(layout, texts);
  std::erase(texts, "");
  return texts;
}

}  // namespace ui
