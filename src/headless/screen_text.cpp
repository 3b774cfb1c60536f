#include "headless/screen_text.h"

#include <algorithm>
#include <ostream>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "text/strings.h"
#include "ui/controls.h"
#include "ui/layout.h"

namespace headless {
namespace {

using Lines = std::vector<std::string>;

Lines TextOf(const ui::Control& control) {
  using enum ui::Control::Kind;
  if (!control.Visible()) return {};
  switch (control.kind()) {
    case Label:
      return {static_cast<const ui::Label&>(control).shows_data ? control.Text()
                                                                : text::WithoutAccelerator(control.Text())};
    case Button:
      return {'<' + text::WithoutAccelerator(control.Text()) + (control.Enabled() ? ">" : ", disabled>")};
    case OptionButton:
      return {(static_cast<const ui::OptionButton&>(control).Selected() ? "(x) " : "( ) ") +
              text::WithoutAccelerator(control.Text())};
    case TextField:
    case ChoiceList:
      return {control.Text()};
    case WebView: {
      Lines lines;
      std::istringstream content(control.Text());
      for (std::string line; std::getline(content, line);) lines.push_back(line);
      return lines;
    }
    default:
      return {};  // pictures; and the status bar, printed separately
  }
}

void Append(Lines& lines, const Lines& more, const std::string& indent = "") {
  for (const std::string& line : more) lines.push_back(indent + line);
}

Lines LinesOf(const ui::Box& box);

/// Boxes of one line share a line; longer ones follow below.
Lines SideBySide(std::span<const ui::Box> boxes) {
  Lines lines;
  Lines below;
  for (const ui::Box& box : boxes) {
    const Lines own = LinesOf(box);
    if (own.size() != 1)
      Append(below, own);
    else if (lines.empty())
      lines = own;
    else
      lines[0] += '\t' + own[0];
  }
  Append(lines, below);
  return lines;
}

Lines LinesOf(const ui::Box& box) {
  using enum ui::Box::Kind;
  Lines lines;
  switch (box.kind) {
    case Leaf:
      return TextOf(*box.control);
    case Row:
      return SideBySide(box.children);
    case Grid:
      for (auto row = std::span(box.children); !row.empty();) {
        const auto cells = std::min(row.size(), static_cast<std::size_t>(box.columns));
        Append(lines, SideBySide(row.first(cells)));
        row = row.subspan(cells);
      }
      break;
    case Frame:
      lines.push_back('[' + text::WithoutAccelerator(box.control->Text()) + ']');
      Append(lines, LinesOf(box.children[0]), "  ");
      break;
    case Pages:
      for (std::size_t page = 0; page < box.children.size(); ++page) {
        lines.push_back(
            "page\t" + text::WithoutAccelerator(static_cast<const ui::Tabs&>(*box.control).Captions()[page]));
        Append(lines, LinesOf(box.children[page]), "  ");
      }
      break;
    default:
      for (const ui::Box& child : box.children) Append(lines, LinesOf(child));
  }
  return lines;
}

}  // namespace

void PrintScreen(const PlugIn& plug_in, std::ostream& out) {
  for (const Desktop::Shown& shown : plug_in.desktop.messages)
    out << "message\t" << shown.message.text << '\n';
  out << "window\t" << plug_in.main.Caption() << '\n';
  for (const std::string& line : LinesOf(plug_in.main.layout())) out << line << '\n';
  for (const std::string& panel : plug_in.main.StatusBar.Panels()) out << "status\t" << panel << '\n';
  for (const ui::ListView::Row& row : plug_in.log.lstActivity.Rows())
    out << (row.icon == ui::ListView::Icon::Red ? "error\t" : "done\t") << row.cells[1] << '\t'
        << row.cells[2] << '\n';
}

}  // namespace headless
