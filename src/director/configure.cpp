#include "director/configure.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "automation/convert.h"
#include "director/networks.h"
#include "lns/members.h"
#include "platform/error.h"
#include "session/session.h"

namespace director {
namespace {

constexpr int kOk = 1, kCancel = 2, kYes = 6, kNo = 7;

bool Has(const Box& box, int button) { return std::ranges::count(box.buttons, button) != 0; }

using platform::CallKind;
using platform::Value;

void Put(platform::LateBound& plug_in, std::string_view property, const Value& value) {
  plug_in.Invoke({property}, CallKind::Put, {&value, 1});
}

void PutIfGiven(platform::LateBound& plug_in, std::string_view property, std::optional<std::int32_t> value) {
  if (value) Put(plug_in, property, *value);
}

void OpenNetwork(platform::LateBound& plug_in, const std::string& network,
                 const std::string& interface_name) {
  if (!interface_name.empty()) {
    Put(plug_in, "Remote", true);
    Put(plug_in, "NetworkInterfaceName", interface_name);
  }
  Put(plug_in, "networkName", network);
}

}  // namespace

bool Box::IsQuestion() const { return Has(*this, kYes); }

int Box::ButtonFor(bool yes) const {
  if (IsQuestion()) return yes ? kYes : kNo;
  return Has(*this, kCancel) && Has(*this, kOk) ? kCancel : kOk;
}

std::string Report(const Box& box, std::optional<bool> answer) {
  const std::string said = box.text.empty() ? box.title : box.text;
  std::string report =
      "director: the plug-in " + std::string(box.IsQuestion() ? "asks" : "says") + ": " + said;
  if (!answer)
    return report + "\n(It waits on its display. To answer it here, give --answer yes or --answer no.)\n";
  const int button = box.ButtonFor(*answer);
  return report +
         (button == kYes      ? " - yes"
          : button == kNo     ? " - no"
          : button == kCancel ? " - cancelled"
                              : "") +
         '\n';
}

void Configure(platform::LateBound& plug_in, const ConfigureRequest& request) {
  OpenNetwork(plug_in, NetworkOf(request.path), request.interface_name);
  PutIfGiven(plug_in, "left", request.left);
  PutIfGiven(plug_in, "top", request.top);
  PutIfGiven(plug_in, "Width", request.width);
  PutIfGiven(plug_in, "Height", request.height);
  const bool is_object = !request.lonmark_object.empty();
  const std::array<Value, 3> command = {
      session::kConfigureCommand, is_object ? session::kLonMarkObjectType : session::kAppDeviceType,
      is_object ? request.path + "/" + request.lonmark_object : request.path};
  plug_in.Invoke({"SendCommand"}, CallKind::Method, command);
  if (!request.hidden) Put(plug_in, "Visible", true);
}

void SendToSystem(platform::LateBound& plug_in, std::int32_t command, const std::string& network,
                  const std::string& interface_name, const std::string& system_path) {
  OpenNetwork(plug_in, network, interface_name);
  const std::array<Value, 3> arguments = {command, lns::members::kClassSystem, system_path};
  plug_in.Invoke({"SendCommand"}, CallKind::Method, arguments);
}

bool IsShown(platform::LateBound& plug_in) {
  return platform::ValueOr(
      false, [&] { return automation::ToBoolean(plug_in.Invoke({"Visible"}, CallKind::Get, {})); });
}

}  // namespace director
