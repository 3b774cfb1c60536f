#include "simulator/network_variable.h"

#include <algorithm>

#include "simulator/device_objects.h"
#include "simulator/errors.h"

namespace simulator {

NetworkVariable::NetworkVariable(Origin origin, model::DeviceKey key, std::string name)
    : Simulated(std::move(origin)), key_(std::move(key)), name_(std::move(name)) {}

const model::Variable& NetworkVariable::Type() {
  const model::Device& device = model::DeviceOf(installation(), key_);
  auto& type = model::TemplateOf(installation(), key_.network, device.template_name);
  const model::Variable* found = model::FindByName(type.variables, name_);
  const bool missing = std::find(device.missing.begin(), device.missing.end(), name_) != device.missing.end();
  if (!found || missing) Fail(Code::ObjectDeleted, "The network variable \"" + name_ + "\" was deleted.");
  return *found;
}

std::int32_t NetworkVariable::Index() {
  const model::Device& device = model::DeviceOf(installation(), key_);
  const auto& variables = model::TemplateOf(installation(), key_.network, device.template_name).variables;
  return static_cast<std::int32_t>(&Type() - variables.data());
}

const std::string& NetworkVariable::FormatName() {
  return format_name_.empty() ? Type().format : format_name_;
}

void NetworkVariable::SetFormat(const Value& value) {
  const std::string name = automation::ToText(value);
  const std::string& program_id = model::DeviceOf(installation(), key_).program_id;
  const auto found = strict().formats ? Format::FindDocumented(name, program_id) : Format::Find(name);
  if (!name.empty() && !found) Fail(Code::FormatFailed, "There is no format named \"" + name + "\".");
  format_name_ = name;
  format_ = found;
}

Format NetworkVariable::CurrentFormat() {
  const model::Variable& type = Type();
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
  const model::Variable& type = Type();
  const Format format = CurrentFormat();
  RequireAnswer();
  const model::Device& device = model::DeviceOf(installation(), key_);
  return format.Render(model::ValueOf(device, type), Style());
}

void NetworkVariable::WriteValue(const Value& value) {
  const model::Variable& type = Type();
  const Format format = CurrentFormat();
  Bytes bytes = format.Parse(automation::ToText(value), type.value.size(), Style());
  RequireAnswer();
  model::Device& device = model::DeviceOf(installation(), key_);
  const bool refused = std::find(device.refuses.begin(), device.refuses.end(), name_) != device.refuses.end();
  if (refused || type.is_output)
    Fail(Code::WriteRefused, "The device refused the value of \"" + name_ + "\".");
  if (strict().database) device.database.try_emplace(name_, model::ValueOf(device, type));
  device.values[name_] = std::move(bytes);
  session().simulation().MarkChanged();
}

std::span<const MemberRow<NetworkVariable>> NetworkVariable::Members() {
  using Self = NetworkVariable;
  static const MemberRow<Self> kRows[] = {
      {0, "Name", [](Self& self, Arguments) -> Value { return self.name_; }},
      {1, "Value", [](Self& self, Arguments) { return self.ReadValue(); },
       [](Self& self, const Value& value) { self.WriteValue(value); }},
      {2, "DsFormatType", [](Self& self, Arguments) -> Value { return self.FormatName(); },
       [](Self& self, const Value& value) { self.SetFormat(value); }},
      {3, "SourceOptions", [](Self& self, Arguments) -> Value { return self.source_options_; },
       [](Self& self, const Value& value) { self.source_options_ = WholeNumber(value, 0, 2); }},
      {4, "Index", [](Self& self, Arguments) -> Value { return self.Index(); }},
      {5, "Direction", [](Self& self, Arguments) -> Value { return self.Type().is_output ? 1 : 0; }},
      {6, "DsMonitorTag", [](Self& self, Arguments) -> Value { return self.monitor_tag_; },
       [](Self& self, const Value& value) { self.monitor_tag_ = automation::ToInteger(value); }},
      ClassRow<22>(7),
      ParentRow(8),
  };
  return kRows;
}

}  // namespace simulator
