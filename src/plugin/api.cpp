#include "plugin/api.h"

#include <algorithm>

#include "lns/object_path.h"
#include "platform/raised.h"
#include "registration/command_registration.h"
#include "registration/command_removal.h"
#include "session/session.h"
#include "text/numbers.h"

namespace plugin {
namespace {

constexpr const char* kNotRegistered = "Unable to register Supported Commands";
constexpr const char* kReadOnly = "Attempt to write to read-only property";

}  // namespace

LNSPlugInAPI::LNSPlugInAPI(const session::Services& services, fMain& main)
    : services_(services), main_(main) {
  session::Session& session = services_.session;
  // Counted before the window is loaded: other directors may connect or disconnect meanwhile.
  if (session.InstanceCount++ != 0) return;
  session.SupportedCommands = session::MakeSupportedCommands(services_.program);
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
  --services_.session.InstanceCount;
  main_.EndIfWanted();
}

std::span<const automation::MemberRow<LNSPlugInAPI>> LNSPlugInAPI::Members() {
  using automation::ToBoolean;
  using automation::ToInteger;
  using automation::ToText;
  using platform::Arguments;
  using platform::Value;
  using Api = LNSPlugInAPI;
  constexpr auto kRefuseWrite = [](Api& api, const Value&) { api.Raise(20002, kReadOnly); };
  static const Row kMembers[] = {
      Function(
          1, "SendCommand",
          [](Api& api, Arguments a) { api.SendCommand(ToInteger(a[0]), ToInteger(a[1]), ToText(a[2])); }, 3),
      Property(
          2, "Visible", [](Api& api) { return api.main_.Visible(); },
          [](Api& api, const Value& v) { api.SetVisible(ToBoolean(v)); }),
      Property(
          3, "networkName", [](Api& api) { return api.services_.session.CurrentNetworkName; },
          [](Api& api, const Value& v) { api.SetNetworkName(ToText(v)); }),
      Property(
          4, "NetworkInterfaceName", [](Api& api) { return api.network_interface_name_; },
          [](Api& api, const Value& v) { api.network_interface_name_ = ToText(v); }),
      Property(5, "Remote", Of<&Api::RemoteFlag>,
               [](Api& api, const Value& v) { api.SetRemoteFlag(ToBoolean(v)); }),
      SideRow<Side::Height>(6, "Height"),
      SideRow<Side::Width>(7, "Width"),
      SideRow<Side::Left>(8, "left"),
      Property(
          9, "Minimized", [](Api& api) { return api.main_.State() == ui::WindowState::Minimized; },
          [](Api& api, const Value& v) { api.SetMinimized(ToBoolean(v)); }),
      Property(
          10, "ManufacturerID", [](Api& api) { return api.services_.identity.PlugInManufacturerID; },
          kRefuseWrite),
      Property(
          11, "ManufacturerName", [](Api& api) { return api.services_.identity.PlugInManufacturerName; },
          kRefuseWrite),
      Property(
          12, "LcaVersion", [](Api&) { return std::string("3.0"); }, kRefuseWrite),
      Property(
          13, "Version", [](Api& api) { return api.services_.identity.PlugInVersion; }, kRefuseWrite),
      SideRow<Side::Top>(14, "top"),
      Property(
          15, "Name", [](Api& api) { return api.services_.identity.PlugInName; }, kRefuseWrite),
      Property(
          16, "DevelopmentProgramId",
          [](Api& api) { return api.services_.session.DevelopmentProgramIdValue; },
          [](Api& api, const Value& v) { api.SetDevelopmentProgramId(ToText(v)); }),
  };
  return kMembers;
}

void LNSPlugInAPI::SendCommand(std::int32_t command_id, std::int32_t object_type, const std::string& data) {
  using Command = session::SupportedCommand;
  const fMain::Operation running(main_);
  const auto& rows = services_.session.SupportedCommands;
  const bool registration =
      command_id == session::kRegisterCommand || command_id == session::kDeregisterCommand;
  services_.progress.Show();
  if (registration)
    RunRegistration(command_id);
  else
    services_.progress.DisplayStatus("Initializing plug-in . . .");
  services_.progress.Close();
  services_.desktop.Yield();
  if (registration) return;
  const auto row = std::ranges::find_if(rows, [=](const Command& each) {
    return each.CommandId == command_id && each.ObjectType == object_type;
  });
  if (row != rows.end()) return Dispatch(*row, data);
  if (std::ranges::count(rows, command_id, &Command::CommandId) != 0)
    Raise(20004, "Object type not supported for this command");
  Raise(20003, "Command not supported");
}

void LNSPlugInAPI::RunRegistration(std::int32_t command_id) {
  if (services_.session.Registering) Raise(20000, kNotRegistered);
  const platform::Raised registering(services_.session.Registering);
  if (command_id == session::kDeregisterCommand) {
    services_.progress.DisplayStatus("Unregistering plug-in . . .");
    registration::RemoveCommandsAndTemplates(services_, /*exhaustive=*/true, /*first_network=*/false);
    return;
  }
  services_.progress.DisplayStatus("Registering plug-in . . .");
  // On failure the progress window deliberately stays, as it names the failed command.
  if (!registration::RegisterCommands(services_)) Raise(20000, kNotRegistered);
}

void LNSPlugInAPI::Dispatch(const session::SupportedCommand& row, const std::string& path) {
  session::Session& session = services_.session;
  const lns::Object object = lns::ResolveObject(row.ObjectType, lns::SplitObjectPath(path),
                                                session.CurrentNetwork, session.CurrentSystem);
  if (!object) Raise(20005, "Object not found");
  session.CurrentObjectPath = path;
  if (row.ObjectType == session::kLonMarkObjectType)
    main_.ProcessLonMarkObjectCommand(lns::LonMarkObject(object.reference()));
  else
    main_.ProcessDeviceCommand(lns::AppDevice(object.reference()));
}

/// A program that has ended shows nothing.
void LNSPlugInAPI::SetVisible(bool visible) {
  if (main_.HasEnded()) return;
  const bool covered = main_.Visible() && visible && main_.State() != ui::WindowState::Minimized;
  main_.SetVisible(visible);
  // A director that shows the next device in the same window wants the user to see it.
  if (covered) main_.BringToFront();
}

void LNSPlugInAPI::SetNetworkName(const std::string& name) {
  if (services_.session.Opening) Raise(20006, "Cannot open the network " + name);
  const platform::Raised opening(services_.session.Opening);
  const fMain::Operation running(main_);
  const ui::BusyPointer busy(services_.desktop);
  try {
    services_.session.ObjectServer = main_.lcaOS();
    session::OpenNetwork(services_.session, name, network_interface_name_);
  } catch (const platform::Error&) {
    Raise(20006, "Cannot open the network " + name);
  }
}

bool LNSPlugInAPI::RemoteFlag() const {
  try {
    return main_.lcaOS().RemoteFlag();
  } catch (const platform::Error&) {
    Raise(20006, "Cannot open the network " + services_.session.CurrentNetworkName);
  }
}

void LNSPlugInAPI::SetRemoteFlag(bool remote) {
  const fMain::Operation running(main_);
  const std::string open_network = services_.session.CurrentNetworkName;
  try {
    services_.session.ObjectServer = main_.lcaOS();
    session::SetRemote(services_.session, remote);
  } catch (const platform::Error&) {
    Raise(20006, "Cannot open the network " + open_network);
  }
}

double LNSPlugInAPI::TwipsPerPixel(Side side) const {
  const bool across = side == Side::Left || side == Side::Width;
  return across ? services_.desktop.TwipsPerPixelX() : services_.desktop.TwipsPerPixelY();
}

std::int32_t LNSPlugInAPI::PixelsOf(Side side) const {
  const double twips[] = {main_.Left(), main_.Top(), main_.Width(), main_.Height()};
  return static_cast<std::int32_t>(
      text::RoundHalfEven(twips[static_cast<std::size_t>(side)] / TwipsPerPixel(side)));
}

void LNSPlugInAPI::SetPixelsOf(Side side, std::int32_t pixels) {
  using enum ui::BorderStyle;
  const ui::BorderStyle border = main_.border_style();
  const bool sizes = side == Side::Width || side == Side::Height;
  if (sizes && (border == FixedSingle || border == FixedDialog || border == FixedToolWindow))
    Raise(20002, kReadOnly);
  if (main_.State() != ui::WindowState::Normal)
    Raise(20006, "Plug-in can't be moved or sized while minimized or maximized");
  double twips[] = {main_.Left(), main_.Top(), main_.Width(), main_.Height()};
  twips[static_cast<std::size_t>(side)] = pixels * TwipsPerPixel(side);
  main_.SetBounds(twips[0], twips[1], twips[2], twips[3]);
}

void LNSPlugInAPI::SetMinimized(bool minimized) {
  main_.SetState(minimized ? ui::WindowState::Minimized : ui::WindowState::Normal);
  // The spellings "minimzed" and "invisble" are deliberate.
  if (!main_.Visible())
    Raise(20006,
          "Can not modify the minimzed property when invisble. The property will be applied the next time "
          "the plug-in is made visible");
}

void LNSPlugInAPI::SetDevelopmentProgramId(const std::string& program_id) {
  constexpr std::size_t kProgramIdDigits = 16;
  services_.session.DevelopmentProgramIdValue =
      text::CharacterCount(program_id) == kProgramIdDigits ? program_id : "";
}

void LNSPlugInAPI::Raise(std::int32_t number, const std::string& text) const {
  throw platform::Error(number, services_.identity.PlugInName, text);
}

}  // namespace plugin
