#include "registration/resource_registration.h"

#include <string>

#include "lonworks/resource_files.h"
#include "platform/error.h"

namespace registration {
namespace {

constexpr const char* kAdding = "Adding resource files to the catalog";

std::string ReasonOf(lonworks::Tools::Outcome outcome) {
  using enum lonworks::Tools::Outcome;
  if (outcome == NotStarted) return "The tool could not be started.";
  return outcome == Unfinished ? "The tool did not finish." : "The tool failed.";
}

}  // namespace

bool AddResources(const session::Services& services, const lns::System& system) {
  const lonworks::ResourceFiles resources(services.registry, services.program);
  std::string path;
  activity::LogAndGoOn(services.log, "Error reading the path of the resource catalog", "",
                       [&] { path = system.LdrfCatalogPath(); });
  const lonworks::ResourceCatalog catalog(path, registry::LonWorksFolder(services.registry), services.files);
  if (!catalog.Lacks(resources.Names(services.files))) return true;
  services.progress.DisplayStatus(std::string(kAdding) + "...");
  lonworks::Tools tools(services.desktop, services.shell, services.registry);
  const auto outcome = catalog.Add(resources.folder(), tools);
  if (outcome == lonworks::Tools::Outcome::Finished) {
    services.log.LogCommand(kAdding, resources.folder());
    return true;
  }
  services.log.LogError(
      activity::ErrorMessage(kResourcesNotAdded, resources.folder() + ": " + ReasonOf(outcome)));
  return false;
}

}  // namespace registration
