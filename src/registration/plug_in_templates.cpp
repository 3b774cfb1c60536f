#include "registration/plug_in_templates.h"

#include <set>
#include <vector>

#include "lns/members.h"
#include "lonworks/resource_files.h"
#include "platform/error.h"
#include "text/strings.h"

namespace registration {
namespace {

constexpr const char* kErrorReading = "Error reading the device template";
constexpr const char* kErrorRemoving = "Error removing unused device templates";
constexpr const char* kNoTemplate = "Unable to find XIF file / create a template.";

/// Value names are ANSI in the registry: names that differ only beyond ASCII would collide.
std::string InAscii(const std::string& name) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string ascii;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80 && c != '%')
      ascii += c;
    else
      ascii += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
  }
  return ascii;
}

/// A failed call may still have added the template; removes an empty one.
lns::DeviceTemplate Add(const lns::DeviceTemplates& templates, const std::string& name) {
  try {
    return templates.Add(name);
  } catch (const platform::Error&) {
    platform::IgnoreFailure([&] {
      if (templates.Item(name).ProgramId().empty()) templates.Remove(name);
    });
    throw;
  }
}

std::set<std::string> ReferencedProgramIds(const lns::System& system) {
  std::set<std::string> referenced;
  const auto devices = system.Subsystems().Item(lns::members::kAllDevices).AppDevices();
  for (const lns::AppDevice device : devices.Items())
    referenced.insert(text::ToUpper(device.DeviceTemplate().ProgramId()));
  return referenced;
}

}  // namespace

lns::DeviceTemplate PlugInTemplates::FindOrMake(const session::SupportedCommand& command) {
  for (const auto& entry : system_.TemplateLibrary().DeviceTemplates().Items()) {
    lns::DeviceTemplate each;
    std::string program_id;  // need not be readable
    activity::LogAndGoOn(services_.log, kErrorReading, std::to_string(entry.ordinal()), [&] {
      each = entry;
      program_id = each.ProgramId();
    });
    if (text::EqualIgnoringCase(program_id, command.ProgramId)) return each;
  }
  try {
    return Make(command);
  } catch (const platform::Error& failure) {
    throw Failure(kNoTemplate + ("\r\n" + failure.description()));
  }
}

lns::DeviceTemplate PlugInTemplates::Make(const session::SupportedCommand& command) {
  const std::string path = FindInterfaceFile(command.ProgramId);
  if (path.empty()) throw Failure(kNoTemplate);
  const std::string name = UniqueName(command.TemplateName);
  const lns::DeviceTemplates templates = system_.TemplateLibrary().DeviceTemplates();
  const lns::DeviceTemplate made = Add(templates, name);
  // The template of another device's file must not get this device's commands.
  bool imported = false;
  activity::LogAndGoOn(services_.log, "Error importing " + path, name, [&] {
    made.Import(path);
    imported = text::EqualIgnoringCase(made.ProgramId(), command.ProgramId);
  });
  if (!imported) {
    activity::LogAndGoOn(services_.log, kErrorRemoving, name, [&] { templates.Remove(name); });
    throw Failure("Could not import the external interface file " + path + ".");
  }
  Remember(name, command.ProgramId);
  return made;
}

std::string PlugInTemplates::FindInterfaceFile(const std::string& program_id) {
  SetSearchFolder();
  const std::string found = services_.interface_files.FindXifForProgramId(program_id);
  return found.empty() ? services_.interface_files.LocateXifByDialog(program_id) : found;
}

void PlugInTemplates::SetSearchFolder() {
  // A remote object server's folders are on another computer.
  if (services_.session.RegistrationRemote) return;
  // By convention interface files are in the Import folder beside the Types folder, which contains the
  // catalogue. A database from another computer may name a folder there.
  std::string above = platform::ValueOr(
      std::string(), [&] { return lonworks::FolderAboveCatalog(system_.LdrfCatalogPath()); });
  if (above.empty() || !services_.files.ReadFolder(above + "\\Import"))
    above = registry::LonWorksFolder(services_.registry);
  if (!above.empty()) services_.interface_files.folder = above + "\\Import";
}

std::string PlugInTemplates::UniqueName(const std::string& wanted) const {
  constexpr int kMostNames = 100;
  std::set<std::string> taken;
  for (const auto& entry : system_.TemplateLibrary().DeviceTemplates().Items())
    activity::LogAndGoOn(services_.log, kErrorReading, std::to_string(entry.ordinal()),
                         [&] { taken.insert(lns::DeviceTemplate(entry).Name()); });
  for (int number = 1; number <= kMostNames; ++number) {
    const std::string name = number == 1 ? wanted : wanted + " " + std::to_string(number);
    if (!taken.contains(name)) return name;
  }
  throw Failure("Could not create a unique template name.");
}

std::string PlugInTemplates::NoteOf(const std::string& template_name) const {
  return InAscii(network_.Name() + "/" + template_name);
}

std::string PlugInTemplates::Remembered(const std::string& template_name) const {
  return services_.registry.Remembered(OwnTemplatesKey(), kOwnTemplates, NoteOf(template_name));
}

void PlugInTemplates::Remember(const std::string& template_name, const std::string& program_id) const {
  // If this fails, the template stays when the plug-in is removed.
  activity::LogAndGoOn(services_.log, "Error recording the device template", template_name, [&] {
    services_.registry.Remember(OwnTemplatesKey(), kOwnTemplates, NoteOf(template_name), program_id);
  });
}

void PlugInTemplates::Forget(const std::string& template_name) const {
  activity::LogAndGoOn(services_.log, "Error removing the record of the device template", template_name, [&] {
    // An empty value would create the key of a plug-in that is not registered.
    if (!Remembered(template_name).empty()) Remember(template_name, "");
  });
}

bool PlugInTemplates::IsOwn(const lns::DeviceTemplate& device_template) const {
  const std::string made = Remembered(device_template.Name());
  return !made.empty() && text::EqualIgnoringCase(made, device_template.ProgramId());
}

void PlugInTemplates::RemoveUnused(Unused which) const {
  const std::set<std::string> referenced = ReferencedProgramIds(system_);
  const lns::DeviceTemplates templates = system_.TemplateLibrary().DeviceTemplates();
  std::vector<std::string> names;
  for (const auto& entry : templates.Items()) {
    std::string name = "?";
    activity::LogAndGoOn(
        services_.log, kErrorRemoving, [&] { return name; },
        [&] {
          const lns::DeviceTemplate each = entry;
          name = each.Name();
          if (referenced.contains(text::ToUpper(each.ProgramId()))) return;
          if (which == Unused::Ask || IsOwn(each)) names.push_back(name);
        });
  }
  for (const std::string& name : names) {
    if (which == Unused::Ask) {
      const ui::Answer answer = services_.desktop.ShowMessage(
          {"The device template '" + name +
               "' is no longer referenced by any device in the current network. Do you want to remove the "
               "device template from the template library?",
           startup::kProgramTitle, ui::Icon::Exclamation, ui::Buttons::YesNo, /*second_is_default=*/true});
      if (answer != ui::Answer::Yes) continue;
    }
    const bool removed = activity::LogAndGoOn(services_.log, kErrorRemoving, name, [&] {
      templates.Remove(name);
      Forget(name);
    });
    if (!removed && which == Unused::Ask)
      services_.desktop.ShowMessage(
          {"Unable to remove the device template: " + name, startup::kProgramTitle, ui::Icon::Critical});
  }
}

}  // namespace registration
