#include "qm5r/sources.h"

#include <algorithm>
#include <ostream>

#include "lns/object_path.h"
#include "lonworks/resource_files.h"
#include "qm5r/progress.h"
#include "startup/identity.h"
#include "text/strings.h"

namespace qm5r {
namespace {

/// A network's name alone means all its devices.
text::Pattern PatternOf(const std::string& place) {
  const text::Pattern pattern(place);
  return pattern.HasWildcard() || place.find('/') != std::string::npos ? pattern
                                                                       : text::Pattern(place + "/*");
}

/// The folder whose tree has all files that match: the part before the first "*", to its last separator.
std::string FolderAbove(const std::string& name) {
  const std::size_t separator = name.substr(0, name.find('*')).find_last_of("/\\");
  return separator == std::string::npos ? "." : name.substr(0, std::max<std::size_t>(separator, 1));
}

/// A folder may lead back to one above it.
constexpr int kDeepest = 32;

void AddFiles(const platform::Files& files, const std::string& folder, const std::string& shown,
              const text::Pattern& pattern, int depth, std::vector<std::string>& found) {
  const auto content = files.ReadFolder(folder);
  if (!content || depth == 0) return;
  for (const platform::Files::Entry& entry : content->entries) {
    const std::string path = shown + entry.name;
    if (entry.is_folder)
      AddFiles(files, folder + files.Separator() + entry.name, path + files.Separator(), pattern, depth - 1,
               found);
    else if (IsFile(path) && pattern.Matches(path))
      found.push_back(path);
  }
}

}  // namespace

bool IsFile(std::string_view place) { return text::EndsWithIgnoringCase(place, settings::kFileExtension); }

settings::SettingsFile ReadFile(const Computer& computer, const std::string& file) {
  try {
    return settings::ReadSettingsFile(computer.files, file);
  } catch (const std::runtime_error& failure) {
    throw Failed(failure.what());
  }
}

void WriteFile(const Options& options, Computer& computer, const std::string& file,
               const std::string& content) {
  try {
    options.force ? computer.files.Write(file, content) : computer.files.WriteNew(file, content);
  } catch (const platform::Error& error) {
    if (!options.force && computer.files.FileExists(file))
      throw Failed(file + " exists; --force replaces it");
    throw Failed(error.description());
  }
}

std::vector<std::string> FilesNamed(const Computer& computer, const std::string& name) {
  const text::Pattern pattern(name, text::Pattern::Backslash::IsPlain);
  if (!pattern.HasWildcard()) return {name};
  std::vector<std::string> found;
  const std::string folder = FolderAbove(name);
  AddFiles(computer.files, folder, folder == "." ? "" : folder + name[folder.size()], pattern, kDeepest,
           found);
  std::ranges::sort(found);
  if (found.empty()) throw Failed("there is no file " + name);
  return found;
}

Sources::Sources(const Options& options, Computer& computer, settings::Versions versions)
    : options_(options),
      computer_(computer),
      versions_(versions),
      selection_(options.fields, options.except) {}

void Sources::ForEach(const std::string& place, const std::function<void(Source)>& use) {
  IsFile(place) ? ForEachFile(place, use) : ForEachDevice(place, use);
}

void Sources::ForEachFile(const std::string& name, const std::function<void(Source)>& use) {
  for (const std::string& file : FilesNamed(computer_, name)) {
    settings::SettingsFile read = ReadFile(computer_, file);
    for (const settings::Finding& finding : read.findings)
      computer_.errors << settings::FindingText(file, finding) << '\n';
    if (read.HasErrors()) throw Failed(file + " has errors");
    use({file, {std::move(read.settings), false, {}}});
  }
}

void Sources::Open(const std::string& network) {
  if (!session_.ObjectServer) {
    session_.ObjectServer = lns::ObjectServer(computer_.make_object_server());
    const std::string prefix(startup::BuiltInText(startup::kResourceFilePrefixText));
    session_.Dialect = std::make_shared<lns::Dialect>(lonworks::UserTypeOwner(prefix));
  }
  if (!network.empty()) OpenNetwork(session_, network, options_.interface_name);
}

std::vector<std::string> Sources::NetworksOf(const text::Pattern& path) {
  const std::string& beginning = path.Beginning();
  const std::size_t end = beginning.find('/');
  if (end != std::string::npos) return {beginning.substr(0, end)};
  Open({});
  std::vector<std::string> names;
  const lns::ObjectServer& server = session_.ObjectServer;
  if (!session_.ServerOpen) server.Open();
  for (const lns::Network network : server.Networks().Items())
    if (std::string name = network.Name(); path.MayBegin(name + '/')) names.push_back(std::move(name));
  if (!session_.ServerOpen) server.Close();
  return names;
}

std::vector<settings::FoundDevice> Sources::Find(const text::Pattern& path) {
  const lns::Network network = session_.CurrentNetwork;
  const lns::System system = session_.CurrentSystem;
  if (path.HasWildcard()) return settings::FindDevices(network, system, path);
  const lns::Object device = lns::ResolveObject(lns::members::kClassAppDevice,
                                                lns::SplitObjectPath(path.Beginning()), network, system);
  if (!device) return {};
  return {{path.Beginning(), lns::AppDevice(device.reference()), {}}};
}

void Sources::ForEachDevice(const std::string& place, const std::function<void(Source)>& use) {
  const text::Pattern path = PatternOf(place);
  const std::vector<std::string> networks = NetworksOf(path);
  bool any = false;
  for (const std::string& network : networks) {
    std::vector<settings::FoundDevice> found;
    try {
      Open(network);
      found = Find(path);
    } catch (const platform::Error& error) {
      if (networks.size() == 1) throw;
      found = {{network, {}, settings::ReasonOf(error)}};
    }
    any = any || !found.empty();
    Read(std::move(found), use);
  }
  if (!any) throw Failed("there is no device " + place);
}

lns::AppDevice Sources::DeviceAt(const std::string& path) {
  const std::size_t name = path.rfind('/') + 1;
  if (path.substr(0, name) != folder_) {
    Open(path.substr(0, path.find('/')));
    beside_ = lns::DevicesBeside(path, session_.CurrentNetwork, session_.CurrentSystem);
    folder_ = path.substr(0, name);
  }
  return beside_.Item(path.substr(name));
}

void Sources::Read(std::vector<settings::FoundDevice> found, const std::function<void(Source)>& use) {
  Progress progress(computer_, found.size());
  for (settings::FoundDevice& each : found) {
    // The reference is released as soon as the device has been read.
    const settings::FoundDevice device = std::move(each);
    progress.Show(device.path);
    settings::ReadDevice read = settings::Read(device, session_.Dialect, selection_, versions_);
    const bool is_silent = !read.failure.empty() || read.settings.HasNone();
    if (is_silent && !read.is_other_type && session_.ObjectServer.IsLost())
      throw Failed("the object server has ended");
    progress.Erase();
    use({device.path, std::move(read)});
  }
}

}  // namespace qm5r
