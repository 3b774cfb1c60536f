#include "simulator/component_apps.h"

#include <algorithm>

#include "simulator/collection.h"
#include "simulator/errors.h"

namespace simulator {

namespace {

/// Null where there is none of that name.
model::ComponentApp* FindApp(const AppLists& lists, const std::string& name) {
  for (model::ComponentApps* list : lists)
    if (model::ComponentApp* found = model::FindByName(*list, name)) return found;
  return nullptr;
}

void CheckName(const AppLists& lists, const std::string& name) {
  if (name.empty()) Fail(Code::OutOfRange, "A command needs a name.");
  if (FindApp(lists, name)) Fail(Code::DuplicateName, "There is a command named \"" + name + "\" already.");
}

}  // namespace

std::vector<std::string> ComponentApps::Names() {
  std::vector<std::string> names;
  for (const model::ComponentApps* list : find_(installation()))
    for (const model::ComponentApp& app : *list)
      if (std::find(names.begin(), names.end(), app.name) == names.end()) names.push_back(app.name);
  return names;
}

Value ComponentApps::Item(const std::string& name) {
  Place place = PartPlace(name);
  place.item = name;
  return Make<ComponentApp>(place, find_, name);
}

Value ComponentApps::Add(Arguments arguments) {
  const AppLists lists = find_(installation());
  model::ComponentApp app;
  app.name = automation::ToText(arguments[0]);
  app.server = automation::ToText(arguments[1]);
  app.class_id = WholeNumber(arguments[2], 0);
  CheckName(lists, app.name);
  const auto& version_of = session().simulation().plug_in_version;
  if (strict().read_only.contains("VersionNumber") && version_of) app.version = version_of(app.server);
  lists.front()->push_back(app);
  session().simulation().MarkChanged();
  return Item(app.name);
}

Value ComponentApps::Remove(Arguments arguments) {
  const auto names = Names();
  const std::string& name = names[FindItem(names, arguments)];
  for (model::ComponentApps* list : find_(installation()))
    if (std::erase_if(*list, [&](const model::ComponentApp& app) { return app.name == name; }) != 0) break;
  session().simulation().MarkChanged();
  return {};
}

std::span<const MemberRow<ComponentApps>> ComponentApps::Members() {
  using Self = ComponentApps;
  static const MemberRow<Self> kRows[] = {
      {0, "Item",
       [](Self& self, Arguments arguments) -> Value {
         const auto names = self.Names();
         return self.Item(names[FindItem(names, arguments)]);
       },
       nullptr, nullptr, 1},
      {1, "Count",
       [](Self& self, Arguments) -> Value { return static_cast<std::int32_t>(self.Names().size()); }},
      ClassRow<31>(2),
      ParentRow(3),
      {4, "Add", nullptr, nullptr, [](Self& self, Arguments arguments) { return self.Add(arguments); }, 3},
      {5, "Remove", nullptr, nullptr, [](Self& self, Arguments arguments) { return self.Remove(arguments); },
       1},
  };
  return kRows;
}

model::ComponentApp& ComponentApp::app() {
  model::ComponentApp* found = FindApp(find_(installation()), name_);
  if (!found) Fail(Code::ObjectDeleted, "The command \"" + name_ + "\" was removed.");
  return *found;
}

model::ComponentApp& ComponentApp::Change() {
  session().simulation().MarkChanged();
  return app();
}

void ComponentApp::SetName(const Value& value) {
  const std::string name = automation::ToText(value);
  model::ComponentApp& renamed = app();
  if (name == name_) return;
  CheckName(find_(installation()), name);
  renamed.name = name;
  Rename(name);
  name_ = name;
  session().simulation().MarkChanged();
}

std::span<const MemberRow<ComponentApp>> ComponentApp::Members() {
  using Self = ComponentApp;
  static const MemberRow<Self> kRows[] = {
      {0, "Name", [](Self& self, Arguments) -> Value { return self.app().name; },
       [](Self& self, const Value& value) { self.SetName(value); }},
      {1, "CommandId", [](Self& self, Arguments) -> Value { return self.app().command_id; },
       [](Self& self, const Value& value) { self.Change().command_id = WholeNumber(value, 0); }},
      {2, "ComponentClassId", [](Self& self, Arguments) -> Value { return self.app().class_id; },
       [](Self& self, const Value& value) { self.Change().class_id = WholeNumber(value, 0); }},
      {3, "DefaultAppFlag", [](Self& self, Arguments) -> Value { return self.app().is_default; },
       [](Self& self, const Value& value) { self.Change().is_default = automation::ToBoolean(value); }},
      {4, "Description", [](Self& self, Arguments) -> Value { return self.app().description; },
       [](Self& self, const Value& value) { self.Change().description = automation::ToText(value); }},
      {5, "RegisteredServer", [](Self& self, Arguments) -> Value { return self.app().server; },
       [](Self& self, const Value& value) { self.Change().server = automation::ToText(value); }},
      {6, "ManufacturerId", [](Self& self, Arguments) -> Value { return self.app().manufacturer_id; },
       [](Self& self, const Value& value) { self.Change().manufacturer_id = automation::ToText(value); }},
      {7, "VersionNumber", [](Self& self, Arguments) -> Value { return self.app().version; },
       [](Self& self, const Value& value) { self.Change().version = automation::ToText(value); }},
      ClassRow<30>(8),
      ParentRow(9),
  };
  return kRows;
}

}  // namespace simulator
