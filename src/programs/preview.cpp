// preview: shows the plug-in's window for a device in a network file as text, without Windows. For authors of
// network files.

#include <chrono>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "director/configure.h"
#include "headless/plug_in.h"
#include "headless/screen_text.h"

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
  headless::PrintScreen(plug_in, std::cout);
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
