// preview: shows the plug-in's window for a device in a network file as text, without Windows. For authors of
// network files.

#include <chrono>
#include <iostream>
#include <span>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "director/configure.h"
#include "headless/plug_in.h"
#include "text/strings.h"
#include "ui/controls.h"
#include "ui/layout.h"

namespace {

constexpr const char* kUsage =
    "usage: preview <network file> <network/system.subsystem/device> [c|f]\n"
    "\n"
    "Prints what the plug-in shows for a device: messages, every caption and field of its window, the "
    "status\n"
    "bar and the log. Temperatures are in degrees Celsius (c, the default) or Fahrenheit (f). The network\n"
    "file is not changed.\n"
    "\n"
    "  preview demo/network.json \"Demo Tower/Demo Tower.Floor 1/Thermostat 101\"\n"
    "\n"
    "Exit codes: 0 done, 1 wrong command line, 2 failure.\n";

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

/// Prints what the user would see: the messages, every caption, field and button of the window in the order
/// of its layout, the status bar, and the log.
void PrintScreen(const headless::PlugIn& plug_in) {
  for (const headless::Desktop::Shown& shown : plug_in.desktop.messages)
    std::cout << "message\t" << shown.message.text << '\n';
  std::cout << "window\t" << plug_in.main.Caption() << '\n';
  for (const std::string& line : LinesOf(plug_in.main.layout())) std::cout << line << '\n';
  for (const std::string& panel : plug_in.main.StatusBar.Panels()) std::cout << "status\t" << panel << '\n';
  for (const ui::ListView::Row& row : plug_in.log.lstActivity.Rows())
    std::cout << (row.icon == ui::ListView::Icon::Red ? "error\t" : "done\t") << row.cells[1] << '\t'
              << row.cells[2] << '\n';
}

int Show(const std::string& network_file, const std::string& device, const std::string& units) {
  auto network = simulator::Simulation::FromFile(
      network_file, [](std::chrono::milliseconds time) { std::this_thread::sleep_for(time); });
  network->installation().auto_save = false;  // the preview leaves the file unchanged
  headless::PlugIn plug_in(network, {QM5R_VERSION_MAJOR, QM5R_VERSION_MINOR, QM5R_VERSION_PATCH});
  plug_in.InstallResourceFiles();
  plug_in.registry.SetMachineSetting(plug_in.identity.PlugInKey(), "DisplayUnits", units == "f" ? "1" : "0");
  const auto api = plug_in.CreateApi();
  director::ConfigureRequest request;
  request.path = device;
  director::Configure(*api, request);
  PrintScreen(plug_in);
  return 0;
}

}  // namespace

int main(int count, char** words) {
  const std::vector<std::string> arguments(words + 1, words + count);
  if (arguments == std::vector<std::string>{"--help"}) {
    std::cout << kUsage;
    return 0;
  }
  const std::string units = count == 4 ? arguments[2] : "c";
  if ((count != 3 && count != 4) || (units != "c" && units != "f")) {
    std::cerr << kUsage;
    return 1;
  }
  try {
    return Show(arguments[0], arguments[1], units);
  } catch (const platform::Error& error) {
    std::cerr << "preview: error " << error.number() << ": " << error.description() << '\n';
  } catch (const std::exception& failure) {
    std::cerr << "preview: " << failure.what() << '\n';
  }
  return 2;
}
