#include "windows/system/object_server_source.h"

#include "registry/registry.h"
#include "windows/com/dispatch_object.h"

namespace windows {
namespace {

// Inferred from the name of the control's class; no manual has it.
constexpr const char* kPlatformProgId = "LcaObjectServer.LcaObjectServer";

}  // namespace

std::string ObjectServerProgId(platform::Registry& registry) {
  const std::string named =
      registry::CRegistry(registry, "").MachineSetting("SOFTWARE\\LonWorks\\LCA", "Object Server");
  return named.empty() ? kPlatformProgId : named;
}

platform::LateBoundPtr MakeObjectServer(platform::Registry& registry) {
  return com::CreateObject(ObjectServerProgId(registry));
}

}  // namespace windows
