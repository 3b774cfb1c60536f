#include "settings/device_search.h"

#include <utility>

namespace settings {
namespace {

class Search {
 public:
  explicit Search(const text::Pattern& pattern) : pattern_(pattern) {}

  /// `path` is that of the system or subsystem that contains them.
  void Visit(const lns::Collection<lns::Subsystem>& subsystems, const std::string& path) {
    Try(path, [&] {
      for (const auto& entry : subsystems.Items()) Try(path, [&] { VisitOne(entry, path); });
    });
  }

  std::vector<FoundDevice> Found() && { return std::move(found_); }

 private:
  void VisitOne(const lns::Subsystem& subsystem, const std::string& above) {
    const std::string name = subsystem.Name(), path = above + '.' + name;
    if (lns::RepeatsDevices(name) || !pattern_.MayBegin(path)) return;
    Try(path, [&] {
      if (!pattern_.MayBegin(path + '/')) return;
      for (const auto& entry : subsystem.AppDevices().Items()) AddDevice(entry, path);
    });
    Try(path, [&] { Visit(subsystem.Subsystems(), path); });
  }

  /// A device that cannot be fetched has no name; its number says which one it is.
  void AddDevice(const lns::Collection<lns::AppDevice>::Entry& entry, const std::string& above) {
    Try(above + '/' + std::to_string(entry.ordinal()), [&] {
      const lns::AppDevice device = entry;
      const std::string path = above + '/' + device.Name();
      if (pattern_.Matches(path)) found_.push_back({path, device, {}});
    });
  }

  template <class Step>
  void Try(const std::string& path, const Step& step) {
    try {
      step();
    } catch (const platform::Error& error) {
      found_.push_back({path, {}, ReasonOf(error)});
    }
  }

  const text::Pattern& pattern_;
  std::vector<FoundDevice> found_;
};

}  // namespace

std::vector<FoundDevice> FindDevices(const lns::Network& network, const lns::System& system,
                                     const text::Pattern& path) {
  Search search(path);
  search.Visit(system.Subsystems(), network.Name() + '/' + system.Name());
  return std::move(search).Found();
}

ReadDevice Read(const FoundDevice& found, const std::shared_ptr<lns::Dialect>& dialect,
                const Selection& selection, Versions versions,
                const std::function<ReadPoint(ReadPoint)>& watched) {
  ReadDevice read;
  read.failure = found.failure;
  Origin& origin = read.settings.origin;
  origin.path = found.path;
  if (!read.failure.empty()) return read;
  try {
    origin.program_id = found.device.ProgramId();
    read.is_other_type = !IsThermostat(origin.program_id);
    if (read.is_other_type) return read;
    origin.neuron_id = found.device.NeuronId();
    ReadPoint point = VariablesOf(found.device.Interface(), dialect);
    if (watched) point = watched(std::move(point));
    read.settings = ReadSettings(point, origin, selection, versions);
  } catch (const platform::Error& error) {
    read.failure = ReasonOf(error);
  }
  return read;
}

}  // namespace settings
