#include "simulator/app_devices.h"

#include <algorithm>

#include "simulator/collection.h"
#include "simulator/device_objects.h"
#include "simulator/errors.h"

namespace simulator {
namespace {

constexpr int kNotAttached = 2;
constexpr int kUnconfigured = 2;
constexpr const char* kNeuronIds = "00DE0000";

}  // namespace

std::vector<stored::DeviceKey> AppDevices::Keys() {
  return stored::DeviceKeys(stored::NetworkOf(installation(), network()), chain_);
}

Value AppDevices::Item(Arguments arguments) {
  const auto keys = Keys();
  const stored::DeviceKey& key = keys[FindItem(stored::NamesOf(keys), arguments)];
  const std::string path = DevicePath(session(), key);
  return Make<AppDevice>(Place{path, path, ""}, key);
}

/// A device that is only planned: without a Neuron ID of its own, not commissioned and not on the network.
/// Channel and subnet are taken and mean nothing here.
Value AppDevices::Add(Arguments arguments) {
  stored::Network& network_data = stored::NetworkOf(installation(), network());
  const std::string name = automation::ToText(arguments[0]);
  Value type = arguments[1];
  if (std::holds_alternative<LateBoundPtr>(type))
    type = automation::ToObject(type)->Invoke({"Name"}, platform::CallKind::Get, {});
  stored::Device device;
  device.name = name;
  device.template_name = automation::ToText(type);
  device.program_id = stored::TemplateOf(installation(), network(), device.template_name).program_id;
  if (IsPredefined(chain_)) Fail(Code::NotModifiable, "Nothing can be added to \"" + chain_.back() + "\".");
  if (name.empty() || name.find('/') != std::string::npos)
    Fail(Code::OutOfRange, "\"" + name + "\" is no name of a device.");
  const auto everywhere = stored::DeviceKeys(network_data, {stored::kAllDevices});
  if (strict().demonstration != 0 && everywhere.size() >= Strictness::kDemonstrationDevices)
    FailWith(static_cast<std::uint16_t>(strict().demonstration), "The feature is not available.");
  auto& devices = stored::DevicesOf(network_data.system, chain_);
  if (stored::FindByName(devices, name))
    Fail(Code::DuplicateName, "There is a device named \"" + name + "\".");
  for (const stored::DeviceKey& key : everywhere)
    device.handle = std::max(device.handle, stored::DeviceOf(installation(), key).handle);
  Bytes handle;
  AppendInteger(handle, ++device.handle, 2);
  device.neuron_id = kNeuronIds + ToHex(handle);
  device.state = kUnconfigured;
  device.attachment = kNotAttached;
  device.commissioned = false;
  device.objects =
      stored::ObjectsOfDevices(stored::TemplateOf(installation(), network(), device.template_name));
  devices.push_back(std::move(device));
  session().simulation().MarkChanged();
  const Value added = name;
  return Item({&added, 1});
}

std::span<const MemberRow<AppDevices>> AppDevices::Members() {
  using Self = AppDevices;
  static const Row kRows[] = {
      Indexed(0, "Item", Of<&Self::Item>),
      Property(1, "Count", [](Self& self) { return static_cast<std::int32_t>(self.Keys().size()); }),
      ClassRow<Class::AppDevices>(2),
      ParentRow(3),
      Function(4, "Add", Of<&Self::Add>, 2, 4),
  };
  return kRows;
}

}  // namespace simulator
