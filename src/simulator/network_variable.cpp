#include "simulator/network_variable.h"

#include <algorithm>

#include "simulator/device_objects.h"
#include "simulator/errors.h"

namespace simulator {

NetworkVariable::NetworkVariable(Origin origin, stored::DeviceKey key, std::string name)
    : Simulated(std::move(origin)), key_(std::move(key)), name_(std::move(name)) {}

const stored::Variable& NetworkVariable::Type() {
  const stored::Device& device = stored::DeviceOf(installation(), key_);
  auto& type = stored::TemplateOf(installation(), key_.network, device.template_name);
  const stored::Variable* found = stored::FindByName(type.variables, name_);
  const bool missing = std::find(device.missing.begin(), device.missing.end(), name_) != device.missing.end();
  if (!found || missing) Fail(Code::ObjectDeleted, "The network variable \"" + name_ + "\" was deleted.");
  return *found;
}

std::int32_t NetworkVariable::Index() {
  const stored::Device& device = stored::DeviceOf(installation(), key_);
  const auto& variables = stored::TemplateOf(installation(), key_.network, device.template_name).variables;
  return static_cast<std::int32_t>(&Type() - variables.data());
}

const std::string& NetworkVariable::FormatName() {
  return format_name_.empty() ? Type().format : format_name_;
}

void NetworkVariable::SetFormat(const Value& value) {
  const std::string name = automation::ToText(value);
  const std::string& program_id = stored::DeviceOf(installation(), key_).program_id;
  const auto found = strict().formats ? Format::FindDocumented(name, program_id) : Format::Find(name);
  if (!name.empty() && !found) Fail(Code::FormatFailed, "There is no format named \"" + name + "\".");
  format_name_ = name;
  format_ = found;
}

Format NetworkVariable::CurrentFormat() {
  const stored::Variable& type = Type();
  if (strict().pausing && session().IsPaused(key_.network))
    Fail(Code::Paused, "The data server of the network is paused.");
  return format_ ? *format_ : *Format::Find(type.format);
}

TextStyle NetworkVariable::Style() const { return {strict().regional, strict().coarse}; }

void NetworkVariable::RequireAnswer() {
  if (!Answers(session(), key_))
    Fail(Code::NoCommunication, "The device \"" + key_.name + "\" does not answer.");
}

Value NetworkVariable::ReadValue() {
  const stored::Variable& type = Type();
  const Format format = CurrentFormat();
  RequireAnswer();
  const stored::Device& device = stored::DeviceOf(installation(), key_);
  return format.Render(stored::ValueOf(device, type), Style());
}

void NetworkVariable::WriteValue(const Value& value) {
  const stored::Variable& type = Type();
  const Format format = CurrentFormat();
  Bytes bytes = format.Parse(automation::ToText(value), type.value.size(), Style());
  RequireAnswer();
  stored::Device& device = stored::DeviceOf(installation(), key_);
  const bool refused = std::find(device.refuses.begin(), device.refuses.end(), name_) != device.refuses.end();
  if (refused || type.is_output)
    Fail(Code::WriteRefused, "The device refused the value of \"" + name_ + "\".");
  if (strict().database) device.database.try_emplace(name_, stored::ValueOf(device, type));
  device.values[name_] = std::move(bytes);
  session().simulation().MarkChanged();
}

std::span<const MemberRow<NetworkVariable>> NetworkVariable::Members() {
  using Self = NetworkVariable;
  static const Row kRows[] = {
      Property(0, "Name", [](Self& self) { return self.name_; }),
      Property(1, "Value", Of<&Self::ReadValue>).Set<&Self::WriteValue>(),
      Property(2, "DsFormatType", Of<&Self::FormatName>).Set<&Self::SetFormat>(),
      Property(
          3, "SourceOptions", [](Self& self) { return self.source_options_; },
          [](Self& self, const Value& value) { self.source_options_ = WholeNumber(value, 0, 2); }),
      Property(4, "Index", Of<&Self::Index>),
      Property(5, "Direction", [](Self& self) { return self.Type().is_output ? 1 : 0; }),
      Property(
          6, "DsMonitorTag", [](Self& self) { return self.monitor_tag_; },
          [](Self& self, const Value& value) { self.monitor_tag_ = automation::ToInteger(value); }),
      ClassRow<Class::NetworkVariable>(7),
      ParentRow(8),
  };
  return kRows;
}

}  // namespace simulator
