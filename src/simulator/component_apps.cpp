#include "simulator/component_apps.h"

#include <algorithm>

#include "simulator/errors.h"

namespace simulator {

namespace {

/// Null if there is no such name.
stored::ComponentApp* FindApp(const AppLists& lists, const std::string& name) {
  for (stored::ComponentApps* list : lists)
    if (stored::ComponentApp* found = stored::FindByName(*list, name)) return found;
  return nullptr;
}

void CheckName(const AppLists& lists, const std::string& name) {
  if (name.empty()) Fail(Code::OutOfRange, "A command needs a name.");
  if (FindApp(lists, name)) Fail(Code::DuplicateName, "A command named \"" + name + "\" already exists.");
}

}  // namespace

stored::Names ComponentApps::Names() {
  stored::Names names;
  for (const stored::ComponentApps* list : find_(installation()))
    for (const stored::ComponentApp& app : *list)
      if (std::find(names.begin(), names.end(), app.name) == names.end()) names.push_back(app.name);
  return names;
}

LateBoundPtr ComponentApps::Item(const std::string& name) {
  Place place = PartPlace(name);
  place.item = name;
  return Make<ComponentApp>(place, find_, name);
}

std::string ComponentApps::Add(Arguments arguments) {
  const AppLists lists = find_(installation());
  stored::ComponentApp app;
  app.name = automation::ToText(arguments[0]);
  app.server = automation::ToText(arguments[1]);
  app.class_id = WholeNumber(arguments[2], 0);
  CheckName(lists, app.name);
  const auto& version_of = session().simulation().plug_in_version;
  if (strict().read_only.contains("VersionNumber") && version_of) app.version = version_of(app.server);
  lists.front()->push_back(app);
  return app.name;
}

void ComponentApps::Remove(const std::string& name) {
  for (stored::ComponentApps* list : find_(installation()))
    if (std::erase_if(*list, [&](const stored::ComponentApp& app) { return app.name == name; }) != 0) break;
}

stored::ComponentApp& ComponentApp::Data() {
  stored::ComponentApp* found = FindApp(find_(installation()), name_);
  if (!found) Fail(Code::ObjectDeleted, "The command \"" + name_ + "\" was removed.");
  return *found;
}

void ComponentApp::SetName(const Value& value) {
  const std::string name = automation::ToText(value);
  stored::ComponentApp& renamed = Data();
  if (name == name_) return;
  CheckName(find_(installation()), name);
  renamed.name = name;
  Rename(name);
  name_ = name;
  session().simulation().MarkChanged();
}

std::span<const MemberRow<ComponentApp>> ComponentApp::Members() {
  using App = stored::ComponentApp;
  static const Row kRows[] = {
      Stored<&App::name>(0, "Name").Set<&ComponentApp::SetName>(),
      Setting<&App::command_id>(1, "CommandId"),
      Setting<&App::class_id>(2, "ComponentClassId"),
      Setting<&App::is_default>(3, "DefaultAppFlag"),
      Setting<&App::description>(4, "Description"),
      Setting<&App::server>(5, "RegisteredServer"),
      Setting<&App::manufacturer_id>(6, "ManufacturerId"),
      Setting<&App::version>(7, "VersionNumber"),
      ClassRow<Class::ComponentApp>(8),
      ParentRow(9),
  };
  return kRows;
}

}  // namespace simulator
