#include "ui/layout.h"

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

bool Box::IsField() const {
  return kind == Kind::Leaf &&
         (control->kind() == Control::Kind::TextField || control->kind() == Control::Kind::ChoiceList);
}

std::size_t Box::FirstColumn(std::size_t index) const {
  const std::size_t column = index % ColumnCount();
  if (!children[index].IsField()) return column;
  for (std::size_t cell = index - column; cell < index; ++cell)
    if (children[cell].kind != Kind::Empty) return column;
  return 0;
}

std::vector<std::string> DataTexts(const Box& layout) {
  std::vector<std::string> texts;
  Collect(layout, texts);
  std::erase(texts, "");
  return texts;
}

}  // namespace ui
