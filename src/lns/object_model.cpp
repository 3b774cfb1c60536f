#include "lns/object_model.h"

#include <algorithm>
#include <iterator>

#include "automation/convert.h"
#include "lns/members.h"

namespace lns {
namespace {

using automation::ToBoolean;
using automation::ToInteger;
using automation::ToObject;
using automation::ToText;
using platform::CallKind;

constexpr std::int32_t kObjectVariableNotSet = 91;

/// The system's errors for an object whose process has ended: RPC_S_SERVER_UNAVAILABLE, RPC_S_CALL_FAILED,
/// RPC_S_CALL_FAILED_DNE, RPC_E_DISCONNECTED, RPC_E_SERVER_DIED, RPC_E_SERVER_DIED_DNE and
/// CO_E_OBJNOTCONNECTED.
constexpr std::uint32_t kLost[] = {0x800706BA, 0x800706BE, 0x800706BF, 0x80010108,
                                   0x80010007, 0x80010012, 0x800401FD};

constexpr const char* kDemonstration =
    " The object server may be in demonstration mode, as it is without a licence: a network then has at most "
    "four devices.";

}  // namespace

platform::LateBoundPtr Object::Target() const {
  if (!object_) throw platform::Error(kObjectVariableNotSet, "LNS", "Object variable not set");
  return object_;
}

platform::Value Object::Invoke(const platform::Member& member, CallKind kind,
                               platform::Arguments arguments) const {
  try {
    return Target()->Invoke(member, kind, arguments);
  } catch (const platform::Error& error) {
    if (error.number() != platform::ObjectServerError(members::kFeatureNotAvailable)) throw;
    throw platform::Error(error.number(), error.source(), error.description() + kDemonstration);
  }
}

platform::Value Object::Get(const platform::Member& member) const { return Invoke(member, CallKind::Get); }

platform::LateBoundPtr Object::GetObject(const platform::Member& member) const {
  return ToObject(Get(member));
}

void Object::Put(const platform::Member& member, platform::Value value) const {
  const bool is_reference = std::holds_alternative<platform::LateBoundPtr>(value);
  Invoke(member, is_reference ? CallKind::PutReference : CallKind::Put, {&value, 1});
}

platform::Value Object::Call(const platform::Member& member, platform::Arguments arguments) const {
  return Invoke(member, CallKind::Method, arguments);
}

std::string Object::Name() const { return ToText(Get(members::kName)); }
std::int32_t Object::ClassId() const { return ToInteger(Get(members::kClassId)); }
Object Object::Parent() const { return Object(GetObject(members::kParent)); }

std::int32_t CollectionBase::Count() const { return ToInteger(Get(members::kCount)); }

platform::LateBoundPtr CollectionBase::ItemAt(platform::Value key) const {
  return ToObject(Invoke(members::kItem, CallKind::GetOrMethod, {&key, 1}));
}

void CollectionBase::Remove(std::int32_t ordinal) const {
  const platform::Value key = ordinal;
  Call(members::kRemove, {&key, 1});
}
void CollectionBase::Remove(const std::string& name) const {
  const platform::Value key = name;
  Call(members::kRemove, {&key, 1});
}

std::int32_t ComponentApp::CommandId() const { return ToInteger(Get(members::kCommandId)); }
void ComponentApp::SetCommandId(std::int32_t command) const { Put(members::kCommandId, command); }
std::int32_t ComponentApp::ComponentClassId() const { return ToInteger(Get(members::kComponentClassId)); }
bool ComponentApp::DefaultAppFlag() const { return ToBoolean(Get(members::kDefaultAppFlag)); }
void ComponentApp::SetDefaultAppFlag(bool is_default) const { Put(members::kDefaultAppFlag, is_default); }
void ComponentApp::SetDescription(const std::string& description) const {
  Put(members::kDescription, description);
}
std::string ComponentApp::RegisteredServer() const { return ToText(Get(members::kRegisteredServer)); }
std::string ComponentApp::VersionNumber() const { return ToText(Get(members::kVersionNumber)); }
void ComponentApp::SetVersionNumber(const std::string& version) const {
  Put(members::kVersionNumber, version);
}

ComponentApp ComponentApps::Add(const std::string& name, const std::string& registered_server,
                                std::int32_t class_id) const {
  const platform::Value arguments[] = {name, registered_server, class_id};
  return ComponentApp(ToObject(Call(members::kAdd, arguments)));
}

void NetworkVariable::SetAccessOption(std::int32_t option) const { Put(members::kSourceOptions, option); }
std::string NetworkVariable::FormatType() const { return ToText(Get(members::kDsFormatType)); }
void NetworkVariable::SetFormatType(const std::string& format) const { Put(members::kDsFormatType, format); }
std::string NetworkVariable::Value() const { return ToText(Get(members::kValue)); }
void NetworkVariable::SetValue(const std::string& text) const { Put(members::kValue, text); }

std::int32_t LonMarkObject::Mode() const { return ToInteger(Get(members::kMode)); }
void LonMarkObject::SetMode(std::int32_t scope) const { Put(members::kMode, scope); }
lns::ComponentApps LonMarkObject::ComponentApps() const {
  return lns::ComponentApps(GetObject(members::kComponentApps));
}

Collection<NetworkVariable> Interface::NetworkVariables() const {
  return Collection<NetworkVariable>(GetObject(members::kNetworkVariables));
}
Collection<LonMarkObject> Interface::LonMarkObjects() const {
  return Collection<LonMarkObject>(GetObject(members::kLonMarkObjects));
}

void Interface::UploadConfigProperties() const {
  const platform::Value all = members::kAllProperties;
  Call(members::kUploadConfigProperties, {&all, 1});
}
void Interface::DownloadConfigProperties() const {
  const platform::Value all = members::kAllProperties;
  Call(members::kDownloadConfigProperties, {&all, 1});
}

std::string DeviceTemplate::ProgramId() const { return ToText(Get(members::kProgramId)); }
lns::Interface DeviceTemplate::Interface() const { return lns::Interface(GetObject(members::kInterface)); }
lns::ComponentApps DeviceTemplate::ComponentApps() const {
  return lns::ComponentApps(GetObject(members::kComponentApps));
}
void DeviceTemplate::Import(const std::string& path) const {
  const platform::Value argument = path;
  Call(members::kImport, {&argument, 1});
}

DeviceTemplate DeviceTemplates::Add(const std::string& name) const {
  const platform::Value argument = name;
  return DeviceTemplate(ToObject(Call(members::kAdd, {&argument, 1})));
}

lns::DeviceTemplates TemplateLibrary::DeviceTemplates() const {
  return lns::DeviceTemplates(GetObject(members::kDeviceTemplates));
}

lns::DeviceTemplate AppDevice::DeviceTemplate() const {
  return lns::DeviceTemplate(GetObject(members::kDeviceTemplate));
}
lns::Interface AppDevice::Interface() const { return lns::Interface(GetObject(members::kInterface)); }
std::int32_t AppDevice::AttachmentStatus() const { return ToInteger(Get(members::kAttachmentStatus)); }
bool AppDevice::HasBeenCommissioned() const { return ToBoolean(Get(members::kHasBeenCommissioned)); }
std::int32_t AppDevice::Test() const { return ToInteger(Call(members::kTest)); }
std::int32_t AppDevice::State() const { return ToInteger(Get(members::kState)); }
std::string AppDevice::ProgramId() const { return ToText(Get(members::kProgramId)); }
std::string AppDevice::NeuronId() const { return ToText(Get(members::kNeuronId)); }

Collection<Subsystem> Subsystem::Subsystems() const {
  return Collection<Subsystem>(GetObject(members::kSubsystems));
}
Collection<AppDevice> Subsystem::AppDevices() const {
  return Collection<AppDevice>(GetObject(members::kAppDevices));
}

lns::NetworkInterface NetworkServiceDevice::NetworkInterface() const {
  return lns::NetworkInterface(GetObject(members::kNetworkInterface));
}
void NetworkServiceDevice::SetNetworkInterface(const lns::NetworkInterface& network_interface) const {
  Put(members::kNetworkInterface, network_interface.reference());
}

void System::Open() const { Call(members::kOpen); }
void System::Close() const { Call(members::kClose); }
bool System::IsOpen() const { return ToBoolean(Get(members::kIsOpen)); }
Collection<Subsystem> System::Subsystems() const {
  return Collection<Subsystem>(GetObject(members::kSubsystems));
}
lns::NetworkServiceDevice System::NetworkServiceDevice() const {
  return lns::NetworkServiceDevice(GetObject(members::kNetworkServiceDevice));
}
lns::TemplateLibrary System::TemplateLibrary() const {
  return lns::TemplateLibrary(GetObject(members::kTemplateLibrary));
}
lns::ComponentApps System::ComponentApps() const {
  return lns::ComponentApps(GetObject(members::kComponentApps));
}
std::string System::LdrfCatalogPath() const { return ToText(Get(members::kLdrfCatalogPath)); }
void System::SetDsPause(bool paused) const { Put(members::kDsPause, paused); }
void System::SetDsMode(std::int32_t mode) const { Put(members::kDsMode, mode); }
void System::BeginNssIdleEvent(std::int32_t milliseconds) const {
  const platform::Value argument = milliseconds;
  Call(members::kBeginNssIdleEvent, {&argument, 1});
}

void Network::Open() const { Call(members::kOpen); }
void Network::Close() const { Call(members::kClose); }
bool Network::IsOpen() const { return ToBoolean(Get(members::kIsOpen)); }
Collection<System> Network::Systems() const { return Collection<System>(GetObject(members::kSystems)); }

void ObjectServer::Open() const { Call(members::kServerOpen); }
void ObjectServer::Close() const { Call(members::kServerClose); }
bool ObjectServer::IsOpen() const { return ToBoolean(Get(members::kServerIsOpen)); }
bool ObjectServer::IsLost() const {
  try {
    IsOpen();
    return false;
  } catch (const platform::Error& error) {
    return std::ranges::find(kLost, static_cast<std::uint32_t>(error.number())) != std::end(kLost);
  }
}
bool ObjectServer::RemoteFlag() const { return ToBoolean(Get(members::kRemoteFlag)); }
void ObjectServer::SetRemoteFlag(bool remote) const { Put(members::kRemoteFlag, remote); }
std::int32_t ObjectServer::Flags() const { return ToInteger(Get(members::kFlags)); }
void ObjectServer::SetFlags(std::int32_t flags) const { Put(members::kFlags, flags); }
void ObjectServer::SetOpenOption(bool value) const { Put(members::kOpenOption, value); }
Collection<Network> ObjectServer::Networks() const {
  return Collection<Network>(GetObject(members::kNetworks));
}
lns::ComponentApps ObjectServer::ComponentApps() const {
  return lns::ComponentApps(GetObject(members::kComponentApps));
}
Collection<NetworkInterface> ObjectServer::NetworkInterfaces() const {
  return Collection<NetworkInterface>(GetObject(members::kNetworkInterfaces));
}
Collection<NetworkInterface> ObjectServer::RemoteNetworkInterfaces() const {
  return Collection<NetworkInterface>(GetObject(members::kRemoteNetworkInterfaces));
}
void ObjectServer::SetActiveRemoteNI(const NetworkInterface& network_interface) const {
  Put(members::kActiveRemoteNI, network_interface.reference());
}
std::unique_ptr<platform::Subscription> ObjectServer::Advise(platform::EventHandler handler) const {
  return Target()->Advise(std::move(handler));
}

bool IsUnknownMember(const platform::Error& error) {
  return error.number() == platform::kUnknownName || error.number() == platform::kMemberNotFound;
}

AppDevice OwningDevice(const Object& object) {
  // Object, its collection, the interface, the device: a longer walk leads elsewhere.
  constexpr int kMostSteps = 6;
  Object at = object;
  for (int step = 0; step < kMostSteps && at; ++step) {
    if (at.ClassId() == members::kClassAppDevice) return AppDevice(at.reference());
    at = at.Parent();
  }
  return {};
}

}  // namespace lns
