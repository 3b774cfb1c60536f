#include "headless/screen_text.h"

#include <algorithm>
#include <ostream>
#include <sstream>
#include <string>

#include "model/screen_layout.h"
#include "text/strings.h"

namespace headless {
namespace {

void PrintFrame(const PlugIn& plug_in, const model::FramePlace& frame, std::ostream& out) {
  const std::string indent = frame.inside.empty() ? "  " : "    ";
  out << indent << '[' << text::WithoutAccelerator(frame.caption) << "]\n";
  for (const model::FieldRow& field : frame.fields) {
    out << indent << "  ";
    if (!field.label.empty()) out << field.label << '\t';
    const std::string unit = model::UnitText(field.unit_label, plug_in.main.DisplayUnits);
    out << plug_in.main.screen.Find(field.control)->Text() << (unit.empty() ? "" : "\t" + unit) << '\n';
  }
}

void PrintPages(const PlugIn& plug_in, std::ostream& out) {
  for (int page = 0; page < static_cast<int>(model::kPageCaptions.size()); ++page) {
    out << "page\t" << text::WithoutAccelerator(model::kPageCaptions[static_cast<std::size_t>(page)]) << '\n';
    std::istringstream text(page == model::kContactPage ? plug_in.main.screen.WebBrowser1.Text() : "");
    for (std::string line; std::getline(text, line);) out << "  " << line << '\n';
    for (const model::FramePlace& frame : model::Frames())
      if (frame.page == page) PrintFrame(plug_in, frame, out);
  }
}

}  // namespace

void PrintScreen(const PlugIn& plug_in, std::ostream& out) {
  for (const Desktop::Shown& shown : plug_in.desktop.messages)
    out << "message\t" << shown.message.text << '\n';
  out << "heading\t" << plug_in.main.lblDeviceTemplate.Text() << "\nmodel\t"
      << plug_in.main.screen.lbModel.Text() << '\t' << plug_in.main.screen.lbHvacType.Text() << '\n';
  PrintPages(plug_in, out);
  for (const std::string& panel : plug_in.main.StatusBar.Panels()) out << "status\t" << panel << '\n';
  for (const ui::ListView::Row& row : plug_in.log.lstActivity.Rows())
    out << (row.icon == ui::ListView::Icon::Red ? "error\t" : "done\t") << row.cells[1] << '\t'
        << row.cells[2] << '\n';
}

}  // namespace headless
