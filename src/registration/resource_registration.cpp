#include "registration/resource_registration.h"

#include <string>

#include "lonworks/resource_catalog.h"
#include "lonworks/resource_files.h"
#include "platform/attempt.h"

namespace registration {
namespace {

constexpr const char* kAdding = "Adding resource files to the catalog";

std::string ReasonOf(lonworks::Tools::Outcome outcome) {
  using enum lonworks::Tools::Outcome;
  if (outcome == NotStarted) return "The tool could not be started.";
  return outcome == Unfinished ? "The tool did not come to its end." : "The tool failed.";
}

}  // namespace

bool AddResources(const Surroundings& with, const lns::System& system) {
  const lonworks::ResourceFiles resources(with.registry, with.program);
  std::string told;
  platform::Attempt([&] { told = system.LdrfCatalogPath(); });
  const lonworks::ResourceCatalog catalog(told, registry::LonWorksFolder(with.registry), with.files);
  if (!catalog.Lacks(resources.Names(with.files))) return true;
  with.progress.DisplayStatus(std::string(kAdding) + "...");
  lonworks::Tools tools(with.desktop, with.shell, with.registry);
  const auto outcome = catalog.Add(resources.folder(), tools);
  if (outcome == lonworks::Tools::Outcome::Finished) {
    with.log.LogCommand(kAdding, resources.folder());
    return true;
  }
  with.log.LogError(
      activity::ErrorMessage(kResourcesNotAdded, resources.folder() + ": " + ReasonOf(outcome)));
  return false;
}

}  // namespace registration
