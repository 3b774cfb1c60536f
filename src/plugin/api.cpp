#include "plugin/api.h"

#include "automation/convert.h"
#include "plugin/object_path.h"
#include "registration/command_registration.h"
#include "session/network_session.h"
#include "text/numbers.h"

namespace plugin {
namespace {

constexpr const char* kNotRegistered = "Unable to register Supported Commands";
constexpr const char* kReadOnly = "Attempt to write to read-only property";

std::int32_t Pixels(double twips, double twips_per_pixel) {
  return static_cast<std::int32_t>(text::RoundHalfEven(twips / twips_per_pixel));
}

}  // namespace

LNSPlugInAPI::LNSPlugInAPI(const Surroundings& surroundings, fMain& main) : with_(surroundings), main_(main) {
  session::Session& session = with_.session;
  // Counted before the window is loaded: other directors may come and go meanwhile.
  if (session.InstanceCount++ != 0) return;
  session.SupportedCommands = session::MakeSupportedCommands(with_.program);
  session.NetworkOpen = false;
  session.ServerOpen = false;
  try {
    main_.Load();
  } catch (...) {
    --session.InstanceCount;
    throw;
  }
}

LNSPlugInAPI::~LNSPlugInAPI() {
  --with_.session.InstanceCount;
  main_.EndIfUnused();
}

std::span<const automation::MemberRow<LNSPlugInAPI>> LNSPlugInAPI::Members() {
  using automation::ToBoolean;
  using automation::ToInteger;
  using automation::ToText;
  using platform::Arguments;
  using platform::Value;
  using Api = LNSPlugInAPI;
  constexpr auto kRefuseWrite = [](Api& api, const Value&) { api.Raise(20002, kReadOnly); };
  static const automation::MemberRow<Api> kMembers[] = {
      {1, "SendCommand", nullptr, nullptr,
       [](Api& api, Arguments a) -> Value {
         api.SendCommand(ToInteger(a[0]), ToInteger(a[1]), ToText(a[2]));
         return {};
       },
       3},
      {2, "Visible", [](Api& api, Arguments) -> Value { return api.main_.Visible(); },
       [](Api& api, const Value& v) { api.SetVisible(ToBoolean(v)); }},
      {3, "networkName", [](Api& api, Arguments) -> Value { return api.with_.session.CurrentNetworkName; },
       [](Api& api, const Value& v) { api.SetNetworkName(ToText(v)); }},
      {4, "NetworkInterfaceName", [](Api& api, Arguments) -> Value { return api.network_interface_name_; },
       [](Api& api, const Value& v) { api.network_interface_name_ = ToText(v); }},
      {5, "Remote", [](Api& api, Arguments) -> Value { return api.main_.lcaOS().RemoteFlag(); },
       [](Api& api, const Value& v) { api.SetRemoteFlag(ToBoolean(v)); }},
      {6, "Height",
       [](Api& api, Arguments) -> Value {
         return Pixels(api.main_.Height(), api.with_.desktop.TwipsPerPixelY());
       },
       [](Api& api, const Value& v) { api.SetHeight(ToInteger(v)); }},
      {7, "Width",
       [](Api& api, Arguments) -> Value {
         return Pixels(api.main_.Width(), api.with_.desktop.TwipsPerPixelX());
       },
       [](Api& api, const Value& v) { api.SetWidth(ToInteger(v)); }},
      {8, "left",
       [](Api& api, Arguments) -> Value {
         return Pixels(api.main_.Left(), api.with_.desktop.TwipsPerPixelX());
       },
       [](Api& api, const Value& v) { api.SetLeft(ToInteger(v)); }},
      {9, "Minimized",
       [](Api& api, Arguments) -> Value { return api.main_.State() == ui::WindowState::Minimized; },
       [](Api& api, const Value& v) { api.SetMinimized(ToBoolean(v)); }},
      {10, "ManufacturerID",
       [](Api& api, Arguments) -> Value { return api.with_.identity.PlugInManufacturerID; }, kRefuseWrite},
      {11, "ManufacturerName",
       [](Api& api, Arguments) -> Value { return api.with_.identity.PlugInManufacturerName; }, kRefuseWrite},
      {12, "LcaVersion", [](Api&, Arguments) -> Value { return std::string("3.0"); }, kRefuseWrite},
      {13, "Version", [](Api& api, Arguments) -> Value { return api.with_.identity.PlugInVersion; },
       kRefuseWrite},
      {14, "top",
       [](Api& api, Arguments) -> Value {
         return Pixels(api.main_.Top(), api.with_.desktop.TwipsPerPixelY());
       },
       [](Api& api, const Value& v) { api.SetTop(ToInteger(v)); }},
      {15, "Name", [](Api& api, Arguments) -> Value { return api.with_.identity.PlugInName; }, kRefuseWrite},
      {16, "DevelopmentProgramId",
       [](Api& api, Arguments) -> Value { return api.with_.session.DevelopmentProgramIdValue; },
       [](Api& api, const Value& v) { api.SetDevelopmentProgramId(ToText(v)); }},
  };
  return kMembers;
}

void LNSPlugInAPI::SendCommand(std::int32_t command_id, std::int32_t object_type, const std::string& data) {
  const session::Operation running(with_.session);
  with_.progress.Show();
  Search found;
  const bool registration =
      command_id == session::kRegisterCommand || command_id == session::kDeregisterCommand;
  if (registration) {
    RunRegistration(command_id);
  } else {
    with_.progress.DisplayStatus("Initializing plug-in . . .");
    found = FindCommand(command_id, object_type);
  }
  with_.progress.Close();
  with_.desktop.Yield();
  if (registration) return;
  if (found.row) return Dispatch(*found.row, data);
  if (found.command_known) Raise(20004, "Object type not supported for this command");
  Raise(20003, "Command not supported");
}

void LNSPlugInAPI::RunRegistration(std::int32_t command_id) {
  if (with_.session.Registering) Raise(20000, kNotRegistered);
  const session::Raised registering(with_.session.Registering);
  if (command_id == session::kDeregisterCommand) {
    with_.progress.DisplayStatus("Unregistering plug-in . . .");
    registration::RemoveCommandsAndTemplates(with_, /*exhaustive=*/true, /*first_network=*/false);
    return;
  }
  with_.progress.DisplayStatus("Registering plug-in . . .");
  // The progress window stays when this fails, deliberately: it shows the command that did.
  if (!registration::RegisterCommands(with_)) Raise(20000, kNotRegistered);
}

LNSPlugInAPI::Search LNSPlugInAPI::FindCommand(std::int32_t command_id, std::int32_t object_type) const {
  Search search;
  for (const session::SupportedCommand& row : with_.session.SupportedCommands) {
    if (row.CommandId != command_id) continue;
    search.command_known = true;
    if (row.ObjectType != object_type) continue;
    search.row = &row;
    break;
  }
  return search;
}

void LNSPlugInAPI::Dispatch(const session::SupportedCommand& row, const std::string& path) {
  session::Session& session = with_.session;
  session.CurrentObjectPath = path;
  const lns::Object object =
      ResolveObject(row.ObjectType, SplitObjectPath(path), session.CurrentNetwork, session.CurrentSystem);
  if (!object) Raise(20005, "Object not found");
  session.CurrentObjectPath = path;  // another command may have come in while the object was looked up
  if (row.ObjectType == session::kLonMarkObjectType)
    main_.ProcessLonMarkObjectCommand(lns::LonMarkObject(object.reference()));
  else
    main_.ProcessDeviceCommand(lns::AppDevice(object.reference()));
}

void LNSPlugInAPI::SetNetworkName(const std::string& name) {
  if (with_.session.Opening) Raise(20006, "Cannot open the network " + name);
  const session::Raised opening(with_.session.Opening);
  if (with_.session.Busy() && name != with_.session.CurrentNetworkName) main_.AbandonOperation();
  const session::Operation running(with_.session);
  const ui::BusyPointer busy(with_.desktop);
  try {
    with_.session.ObjectServer = main_.lcaOS();
    session::OpenNetwork(with_.session, name, network_interface_name_);
  } catch (const platform::Error&) {
    Raise(20006, "Cannot open the network " + name);
  }
}

void LNSPlugInAPI::SetRemoteFlag(bool remote) {
  if (with_.session.Busy()) main_.AbandonOperation();
  const session::Operation running(with_.session);
  with_.session.ObjectServer = main_.lcaOS();
  session::SetRemote(with_.session, remote);
}

void LNSPlugInAPI::SetHeight(std::int32_t pixels) {
  CheckSizable();
  CheckNormalState();
  main_.SetBounds(main_.Left(), main_.Top(), main_.Width(), pixels * with_.desktop.TwipsPerPixelY());
}

void LNSPlugInAPI::SetWidth(std::int32_t pixels) {
  CheckSizable();
  CheckNormalState();
  main_.SetBounds(main_.Left(), main_.Top(), pixels * with_.desktop.TwipsPerPixelX(), main_.Height());
}

void LNSPlugInAPI::SetLeft(std::int32_t pixels) {
  CheckNormalState();
  main_.SetBounds(pixels * with_.desktop.TwipsPerPixelX(), main_.Top(), main_.Width(), main_.Height());
}

void LNSPlugInAPI::SetTop(std::int32_t pixels) {
  CheckNormalState();
  main_.SetBounds(main_.Left(), pixels * with_.desktop.TwipsPerPixelY(), main_.Width(), main_.Height());
}

void LNSPlugInAPI::SetMinimized(bool minimized) {
  main_.SetState(minimized ? ui::WindowState::Minimized : ui::WindowState::Normal);
  // "minimzed" and "invisble" are spelled so deliberately.
  if (!main_.Visible())
    Raise(20006,
          "Can not modify the minimzed property when invisble. The property will be applied the next time "
          "the plug-in "
          "is made visible");
}

void LNSPlugInAPI::SetDevelopmentProgramId(const std::string& program_id) {
  constexpr std::size_t kProgramIdDigits = 16;
  with_.session.DevelopmentProgramIdValue =
      text::CharacterCount(program_id) == kProgramIdDigits ? program_id : "";
}

void LNSPlugInAPI::Raise(std::int32_t number, const std::string& text) const {
  throw platform::Error(number, with_.identity.PlugInName, text);
}

void LNSPlugInAPI::CheckSizable() const {
  using enum ui::BorderStyle;
  const ui::BorderStyle border = main_.border_style();
  if (border == FixedSingle || border == FixedDialog || border == FixedToolWindow) Raise(20002, kReadOnly);
}

void LNSPlugInAPI::CheckNormalState() const {
  if (main_.State() != ui::WindowState::Normal)
    Raise(20006, "Plug-in can't be moved or sized while minimized or maximized");
}

}  // namespace plugin
