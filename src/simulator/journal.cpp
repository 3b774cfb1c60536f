#include "simulator/journal.h"

#include <algorithm>
#include <set>

#include "platform/error.h"
#include "simulator/object_server.h"
#include "text/strings.h"

namespace simulator {

std::string JournalEntry::Text() const {
  std::string text = operation.place.path + " " + operation.member;
  if (operation.kind == OperationKind::Put) text += "=" + operation.value;
  if (operation.kind == OperationKind::Method ||
      (operation.kind == OperationKind::Get && !operation.value.empty()))
    text += "(" + operation.value + ")";
  if (!result.empty()) text += " -> " + result;
  const std::int64_t code = std::int64_t{error} - platform::kObjectServerErrorBase;
  const bool ours = code > 0 && code <= 0xFFFF;
  if (error != 0) text += " ! " + std::to_string(ours ? code : std::int64_t{error});
  return text;
}

std::size_t Journal::Begin(const Operation& operation) {
  if (entries_.size() == kMost) {
    entries_.pop_front();
    ++first_number_;
  }
  entries_.push_back({operation, "", 0});
  return first_number_ + entries_.size() - 1;
}

void Journal::Finish(std::size_t number, const std::string& result) {
  if (JournalEntry* entry = Find(number)) entry->result = result;
}

void Journal::Fail(std::size_t number, std::int32_t error) {
  if (JournalEntry* entry = Find(number)) entry->error = error;
}

std::string Journal::Text() const {
  std::string text;
  for (const JournalEntry& entry : entries_) text += entry.Text() + "\n";
  return text;
}

void Journal::Clear() {
  first_number_ += entries_.size();
  entries_.clear();
}

JournalEntry* Journal::Find(std::size_t number) {
  const bool held = number >= first_number_ && number - first_number_ < entries_.size();
  return held ? &entries_[number - first_number_] : nullptr;
}

namespace {

constexpr const char* kKinds[] = {"", "any", "read", "write", "put"};

bool IsOperation(std::string wanted) {
  if (std::ranges::any_of(kKinds, [&](auto kind) { return text::EqualIgnoringCase(wanted, kind); }))
    return true;
  if (wanted.ends_with('=')) wanted.pop_back();
  return IsMember(wanted);
}

/// Names and addresses of everything that can be the item of an operation.
class KnownItems {
 public:
  void AddDevice(const stored::Device& device, const stored::DeviceTemplate& type, const std::string& path) {
    AddAll(stored::VariableNames(type, device), path);
    AddAll(stored::NamesOf(device.objects), path);
    for (const auto& object : device.objects) AddAll(stored::NamesOf(object.component_apps), path);
    AddTypeCommands(type);
    items_.insert(path);
  }

  void AddNetwork(const stored::Network& network) {
    const stored::System& system = network.system;
    const std::string path = stored::PathOf(network, stored::Chain());
    items_.insert({network.name, path});
    AddAll(stored::NamesOf(system.component_apps), path);
    for (const stored::DeviceTemplate& type : system.templates) {
      const std::string address = path + "/LcaDeviceTemplate:" + type.name;
      items_.insert({type.name, address});
      AddAll(stored::NamesOf(type.variables), address);
      AddAll(stored::NamesOf(type.objects), address);
      AddTypeCommands(type);
    }
    AddSubsystems(system.subsystems, path);
    AddAll({stored::kAllDevices, stored::kDiscovered}, path, ".");
  }

  void AddAll(const stored::Names& names, const std::string& owner, const char* between = "/") {
    for (const std::string_view name : names) {
      items_.emplace(name);
      items_.insert(owner + between + std::string(name));
    }
  }

  /// Also true for a part of a known item, which follows ":".
  bool Have(const std::string& item) const {
    for (std::size_t end = item.size(); end != std::string::npos && end != 0; end = item.rfind(':', end - 1))
      if (items_.contains(item.substr(0, end))) return true;
    return false;
  }

 private:
  void AddTypeCommands(const stored::DeviceTemplate& type) {
    AddAll(stored::NamesOf(type.component_apps), type.name);
    for (const auto& object : type.objects) AddAll(stored::NamesOf(object.component_apps), type.name);
  }
  void AddSubsystems(const std::vector<stored::Subsystem>& subsystems, const std::string& above) {
    AddAll(stored::NamesOf(subsystems), above, ".");
    for (const auto& each : subsystems) AddSubsystems(each.subsystems, above + "." + each.name);
  }

  std::set<std::string> items_;
};

bool MatchesOperation(const std::string& wanted, const Operation& operation) {
  const auto is = [&](const char* word) { return text::EqualIgnoringCase(wanted, word); };
  if (wanted.empty() || is("any")) return true;
  if (is("read")) return ClassOf(operation) == OperationClass::Read;
  if (is("write")) return ClassOf(operation) == OperationClass::Write;
  const bool put = operation.kind == OperationKind::Put;
  if (is("put")) return put;
  if (wanted.ends_with('='))
    return put && text::EqualIgnoringCase(wanted.substr(0, wanted.size() - 1), operation.member);
  return text::EqualIgnoringCase(wanted, operation.member);
}

bool MatchesPlace(const std::string& wanted, const std::string& name, const std::string& path) {
  return wanted.empty() || wanted == name || wanted == path;
}

bool Matches(const stored::Fault& fault, const Operation& operation) {
  const Place& place = operation.place;
  const std::string device_name = place.device.substr(place.device.rfind('/') + 1);
  const bool on_device = !place.device.empty() && MatchesPlace(fault.device, device_name, place.device);
  return (fault.device.empty() || on_device) && MatchesPlace(fault.item, place.item, place.path) &&
         MatchesOperation(fault.operation, operation);
}

}  // namespace

OperationClass ClassOf(const Operation& operation) {
  if (operation.member == "Value")
    return operation.kind == OperationKind::Put ? OperationClass::Write : OperationClass::Read;
  if (operation.member == "Open") return OperationClass::Open;
  if (operation.member == "Test") return OperationClass::Test;
  return OperationClass::Other;
}

std::optional<FaultMistake> MistakeOf(const stored::Fault& fault, stored::Installation& installation) {
  if (!IsOperation(fault.operation))
    return FaultMistake{"operation", "there is no operation \"" + fault.operation + "\""};
  KnownItems items;
  items.AddAll(stored::NamesOf(installation.interfaces), "LcaNetworkInterface", ":");
  items.AddAll(stored::NamesOf(installation.component_apps), "LcaObjectServer", ":");
  bool found = fault.device.empty();
  if (found) items.AddAll({"LcaObjectServer"}, "");
  for (stored::Network& network : installation.networks) {
    if (fault.device.empty()) items.AddNetwork(network);
    for (const stored::DeviceKey& key : stored::DeviceKeys(network, {stored::kAllDevices})) {
      const std::string path = stored::PathOf(network, key);
      if (!MatchesPlace(fault.device, key.name, path)) continue;
      const stored::Device& device = stored::DeviceOf(installation, key);
      items.AddDevice(device, stored::TemplateOf(installation, network.name, device.template_name), path);
      found = true;
    }
  }
  if (!found) return FaultMistake{"device", "there is no device \"" + fault.device + "\""};
  if (!fault.item.empty() && !items.Have(fault.item))
    return FaultMistake{"item", (fault.device.empty() ? "nothing is" : "nothing on the device is") +
                                    (" named \"" + fault.item + "\"")};
  return std::nullopt;
}

Faults::Faults(const std::vector<stored::Fault>& faults) {
  for (const stored::Fault& fault : faults) Add(fault);
}

void Faults::Add(const stored::Fault& fault) { armed_.push_back({fault}); }

std::string Faults::Text() const {
  std::string lines;
  for (const auto& [fault, seen] : armed_) {
    const auto any = [](const std::string& name) { return name.empty() ? "any" : name; };
    const std::string count = std::to_string(seen) + " seen";
    lines += any(fault.device) + '\t' + any(fault.item) + '\t' + any(fault.operation) + '\t' +
             (fault.occurrence == 0 ? "every one, " : "number " + std::to_string(fault.occurrence) + ", ") +
             count + '\t' + (fault.code == 0 ? "vanishes" : std::to_string(fault.code)) + '\n';
  }
  return lines;
}

std::optional<int> Faults::Strike(const Operation& operation) {
  std::optional<int> due;
  for (Armed& armed : armed_) {
    if (!Matches(armed.fault, operation)) continue;
    ++armed.seen;
    const bool is_due = armed.fault.occurrence == 0 || armed.fault.occurrence == armed.seen;
    if (is_due && !due) due = armed.fault.code;
  }
  return due;
}

}  // namespace simulator
