// Paths of objects: an object that is found has at least three path components and a name.

#include "lns/object_path.h"
#include "fuzz.h"
#include "small_network.h"

namespace {

struct OpenNetwork {
  OpenNetwork() {
    server.SetRemoteFlag(false);
    server.Open();
    network = server.Networks().Item("N");
    network.Open();
    system = network.Systems().Item(1);
    system.Open();
  }
  std::shared_ptr<simulator::Simulation> simulation = MakeSmallNetwork();
  lns::ObjectServer server{simulation->CreateObjectServer()};
  lns::Network network;
  lns::System system;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const OpenNetwork demo;
  const auto components = lns::SplitObjectPath(TextOf(data, size));
  for (const std::int32_t type : {7, 28}) {
    const lns::Object found = lns::ResolveObject(type, components, demo.network, demo.system);
    if (found) EXPECT_THAT(components.size() >= 3 && !found.Name().empty());
  }
  demo.simulation->journal().Clear();
  return 0;
}
