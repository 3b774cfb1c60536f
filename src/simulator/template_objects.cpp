#include "simulator/template_objects.h"

#include "simulator/collection.h"
#include "simulator/component_apps.h"

namespace simulator {

Value TemplateLibrary::Templates() {
  const auto names = [](Collection& self) {
    std::vector<std::string> result;
    for (const auto& type : model::NetworkOf(self.installation(), self.network()).system.templates)
      result.push_back(type.name);
    return result;
  };
  return Make<Collection>(
      PartPlace("DeviceTemplates"), 37, names, [names](Collection& self, std::size_t index) {
        const std::string name = names(self)[index];
        const std::string system =
            model::PathOf(model::NetworkOf(self.installation(), self.network()), model::Chain());
        return self.Make<DeviceTemplate>(Place{system + "/LcaDeviceTemplate:" + name, "", name}, name);
      });
}

std::span<const MemberRow<TemplateLibrary>> TemplateLibrary::Members() {
  static const MemberRow<TemplateLibrary> kRows[] = {
      {1, "DeviceTemplates", [](TemplateLibrary& self, Arguments) { return self.Templates(); }},
      ParentRow(2),
  };
  return kRows;
}

void DeviceTemplate::SetXifPath(const Value& value) {
  Data().xif_path = automation::ToText(value);
  session().simulation().MarkChanged();
}

Value DeviceTemplate::Apps() {
  Data();
  const auto find = [network = network(), name = name_](model::Installation& all) -> model::ComponentApps& {
    return model::TemplateOf(all, network, name).component_apps;
  };
  return Make<ComponentApps>(PartPlace("ComponentApps"), FindApps(find));
}

std::span<const MemberRow<DeviceTemplate>> DeviceTemplate::Members() {
  using Self = DeviceTemplate;
  static const MemberRow<Self> kRows[] = {
      {0, "Name", [](Self& self, Arguments) -> Value { return self.Data().name; }},
      {1, "ProgramId", [](Self& self, Arguments) -> Value { return self.Data().program_id; }},
      {2, "XifPath", [](Self& self, Arguments) -> Value { return self.Data().xif_path; },
       [](Self& self, const Value& value) { self.SetXifPath(value); }},
      {3, "ComponentApps", [](Self& self, Arguments) { return self.Apps(); }},
      ClassRow<36>(4),
      ParentRow(5),
  };
  return kRows;
}

}  // namespace simulator
