#include "plugin/plug_in.h"

#include <utility>

namespace plugin {

PlugIn::PlugIn(const Computer& computer)
    : identity(startup::LoadIdentity(computer.program)),
      registry(computer.registry, identity.PlugInName),
      progress(computer.desktop, computer.program, identity.PlugInName),
      interface_files(computer.desktop, computer.files, computer.shell, registry),
      log(computer.desktop, computer.program, computer.files),
      services{computer.desktop,
               computer.program,
               computer.files,
               computer.shell,
               registry,
               identity,
               session,
               progress,
               interface_files,
               log,
               computer.make_object_server},
      main(services) {}

std::shared_ptr<LNSPlugInAPI> PlugIn::CreateApi() { return std::make_shared<LNSPlugInAPI>(services, main); }

registration::MMain::Process PlugIn::ByHand(std::function<void()> register_class) {
  return {.object_server = [this] { return main.lcaOS(); },
          .end_plug_in = [this] { main.EndPlugIn(); },
          .register_class = std::move(register_class)};
}

}  // namespace plugin
