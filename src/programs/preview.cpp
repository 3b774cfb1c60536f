// preview: shows what the plug-in makes of a device of a network file, without Windows. For authors of
// network files.
//
//   preview <network file> <network/system.subsystem/device> [c|f]

#include <chrono>
#include <iostream>
#include <string>
#include <thread>

#include "director/configure.h"
#include "headless/plug_in.h"
#include "headless/screen_text.h"

namespace {

int Show(const std::string& network_file, const std::string& device, const std::string& units) {
  auto network = simulator::Simulation::FromFile(
      network_file, [](std::chrono::milliseconds time) { std::this_thread::sleep_for(time); });
  network->installation().auto_save = false;  // looking at a file changes nothing in it
  headless::PlugIn plug_in(network, {QM5R_VERSION_MAJOR, QM5R_VERSION_MINOR, QM5R_VERSION_PATCH});
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
  if (count != 3 && count != 4) {
    std::cerr << "usage: preview <network file> <network/system.subsystem/device> [c|f]\n";
    return 1;
  }
  try {
    return Show(words[1], words[2], count == 4 ? words[3] : "c");
  } catch (const platform::Error& error) {
    std::cerr << "preview: error " << error.number() << ": " << error.description() << '\n';
  } catch (const std::exception& failure) {
    std::cerr << "preview: " << failure.what() << '\n';
  }
  return 2;
}
