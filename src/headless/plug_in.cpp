#include "headless/plug_in.h"

#include <utility>

namespace headless {

PlugIn::PlugIn(std::shared_ptr<simulator::Simulation> network, platform::Program::Version version)
    : program(version),
      identity(startup::LoadIdentity(program)),
      registry(machine, identity.PlugInName),
      progress(desktop, program, identity.PlugInName),
      interface_files(desktop, files, shell, registry),
      log(desktop, program, files),
      simulation(std::move(network)),
      surroundings{
          {desktop, program, shell, registry, identity, session, progress, interface_files, log, files},
          [this]() -> platform::LateBoundPtr {
            if (object_server_missing) throw platform::Error(429, "Headless", "Can't create object");
            platform::LateBoundPtr object_server = simulation->CreateObjectServer();
            return in_between ? in_between(std::move(object_server)) : object_server;
          }},
      main(surroundings) {}

std::shared_ptr<plugin::LNSPlugInAPI> PlugIn::CreateApi() {
  return std::make_shared<plugin::LNSPlugInAPI>(surroundings, main);
}

}  // namespace headless
