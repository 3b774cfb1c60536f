#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "automation/convert.h"
#include "lns/members.h"
#include "platform/late_bound.h"

/// The object server's objects, one class for each role, over late-bound objects. An instance is a reference
/// as in a script: it may refer to nothing, copies share the object, and the last copy releases it.
///
/// Every operation is one call of the platform and throws its platform::Error. A call through an empty
/// reference throws 91, as in automation.
namespace lns {

class Object {
 public:
  Object() = default;
  explicit Object(platform::LateBoundPtr object) : object_(std::move(object)) {}

  explicit operator bool() const { return object_ != nullptr; }
  const platform::LateBoundPtr& reference() const { return object_; }
  friend bool operator==(const Object&, const Object&) = default;

  std::string Name() const { return Get(members::kName); }
  std::int32_t ClassId() const { return Get(members::kClassId); }
  /// The object through which this one was reached.
  Object Parent() const { return Get(members::kParent); }

 protected:
  /// What a member returned, to be taken as a text, number, flag, or one of the objects below.
  class Result {
   public:
    explicit Result(platform::Value value) : value_(std::move(value)) {}
    template <class T>
    operator T() const {
      if constexpr (std::same_as<T, std::string>)
        return automation::ToText(value_);
      else if constexpr (std::same_as<T, std::int32_t>)
        return automation::ToInteger(value_);
      else if constexpr (std::same_as<T, bool>)
        return automation::ToBoolean(value_);
      else
        return T(automation::ToObject(value_));
    }

   private:
    platform::Value value_;
  };
  Result Get(const platform::Member& member) const { return Invoke(member, platform::CallKind::Get); }
  void Put(const platform::Member& member, platform::Value value) const;
  template <class... Values>
  Result Call(const platform::Member& member, const Values&... values) const {
    const std::array<platform::Value, sizeof...(Values)> arguments{values...};
    return Invoke(member, platform::CallKind::Method, arguments);
  }
  /// The caller holds it: calls that arrive meanwhile may drop the last reference to the object.
  platform::LateBoundPtr Target() const;
  Result Invoke(const platform::Member& member, platform::CallKind kind,
                platform::Arguments arguments = {}) const;

 private:
  platform::LateBoundPtr object_;
};

struct CollectionBase : Object {
  using Object::Object;
  std::int32_t Count() const { return Get(members::kCount); }
  void Remove(std::int32_t ordinal) const { Call(members::kRemove, ordinal); }
  void Remove(const std::string& name) const { Call(members::kRemove, name); }

 protected:
  platform::LateBoundPtr ItemAt(platform::Value key) const {
    return Invoke(members::kItem, platform::CallKind::GetOrMethod, {&key, 1});
  }
};

/// Items count from 1; names are case-sensitive.
template <class T>
class Collection : public CollectionBase {
 public:
  using CollectionBase::CollectionBase;
  T Item(std::int32_t ordinal) const { return T(ItemAt(ordinal)); }
  T Item(const std::string& name) const { return T(ItemAt(name)); }

  /// A position in the collection, and the iterator over positions. Converting it fetches the item, so a loop
  /// can continue past an item that cannot be fetched.
  class Entry {
   public:
    Entry(const Collection* all, std::int32_t ordinal) : all_(all), ordinal_(ordinal) {}
    operator T() const { return all_->Item(ordinal_); }
    std::int32_t ordinal() const { return ordinal_; }

    const Entry& operator*() const { return *this; }
    Entry& operator++() { return ++ordinal_, *this; }
    bool operator==(const Entry&) const = default;

   private:
    const Collection* all_;
    std::int32_t ordinal_;
  };
  struct Entries {
    Collection all;
    std::int32_t count;
    Entry begin() const { return {&all, 1}; }
    Entry end() const { return {&all, std::max(count, 0) + 1}; }
  };

  /// The items in order: `for (const AppDevice device : devices.Items())`. Reads Count once.
  Entries Items() const { return {*this, Count()}; }
};

struct NetworkInterface : Object {
  using Object::Object;
};

/// A plug-in's command, as directors find it on an object.
struct ComponentApp : Object {
  using Object::Object;
  std::int32_t CommandId() const { return Get(members::kCommandId); }
  void SetCommandId(std::int32_t command) const { Put(members::kCommandId, command); }
  /// The class of the objects that the command works on.
  std::int32_t ComponentClassId() const { return Get(members::kComponentClassId); }
  bool DefaultAppFlag() const { return Get(members::kDefaultAppFlag); }
  void SetDefaultAppFlag(bool is_default) const { Put(members::kDefaultAppFlag, is_default); }
  void SetDescription(const std::string& description) const { Put(members::kDescription, description); }
  /// The ProgID of the plug-in's automation class.
  std::string RegisteredServer() const { return Get(members::kRegisteredServer); }
  std::string VersionNumber() const { return Get(members::kVersionNumber); }
  void SetVersionNumber(const std::string& version) const { Put(members::kVersionNumber, version); }
};

struct ComponentApps : Collection<ComponentApp> {
  using Collection::Collection;
  /// The result may be an empty reference.
  ComponentApp Add(const std::string& name, const std::string& registered_server,
                   std::int32_t class_id) const {
    return Call(members::kAdd, name, registered_server, class_id);
  }
};

struct NetworkVariable : Object {
  using Object::Object;
  void SetAccessOption(std::int32_t option) const { Put(members::kSourceOptions, option); }
  std::string FormatType() const { return Get(members::kDsFormatType); }
  void SetFormatType(const std::string& format) const { Put(members::kDsFormatType, format); }
  /// Reads the value from the device as text in the current format.
  std::string Value() const { return Get(members::kValue); }
  /// Parses the text in the current format and sends the value to the device.
  void SetValue(const std::string& text) const { Put(members::kValue, text); }
};

struct LonMarkObject : Object {
  using Object::Object;
  /// The scope of the resource file that defines the object, from 0 (standard) to 6 (one model of one maker).
  std::int32_t Mode() const { return Get(members::kMode); }
  void SetMode(std::int32_t scope) const { Put(members::kMode, scope); }
  lns::ComponentApps ComponentApps() const { return Get(members::kComponentApps); }
};

struct Interface : Object {
  using Object::Object;
  Collection<NetworkVariable> NetworkVariables() const { return Get(members::kNetworkVariables); }
  Collection<LonMarkObject> LonMarkObjects() const { return Get(members::kLonMarkObjects); }
  /// Copies the device's configuration to the network database.
  void UploadConfigProperties() const { Call(members::kUploadConfigProperties, members::kAllProperties); }
  /// Copies the network database's configuration to the device.
  void DownloadConfigProperties() const { Call(members::kDownloadConfigProperties, members::kAllProperties); }
};

struct DeviceTemplate : Object {
  using Object::Object;
  std::string ProgramId() const { return Get(members::kProgramId); }
  /// The interface of the devices of this type; its variables have no values.
  lns::Interface Interface() const { return Get(members::kInterface); }
  lns::ComponentApps ComponentApps() const { return Get(members::kComponentApps); }
  /// Takes the interface from an external interface file, in text or binary form, which the object server
  /// must be able to read.
  void Import(const std::string& path) const { Call(members::kImport, path); }
};

struct DeviceTemplates : Collection<DeviceTemplate> {
  using Collection::Collection;
  DeviceTemplate Add(const std::string& name) const { return Call(members::kAdd, name); }
};

struct TemplateLibrary : Object {
  using Object::Object;
  lns::DeviceTemplates DeviceTemplates() const { return Get(members::kDeviceTemplates); }
};

struct AppDevice : Object {
  using Object::Object;
  lns::DeviceTemplate DeviceTemplate() const { return Get(members::kDeviceTemplate); }
  lns::Interface Interface() const { return Get(members::kInterface); }
  std::int32_t AttachmentStatus() const { return Get(members::kAttachmentStatus); }
  bool HasBeenCommissioned() const { return Get(members::kHasBeenCommissioned); }
  /// Tests the device; members::kTestGood if it answers correctly.
  std::int32_t Test() const { return Call(members::kTest); }
  std::int32_t State() const { return Get(members::kState); }
  std::string ProgramId() const { return Get(members::kProgramId); }
  std::string NeuronId() const { return Get(members::kNeuronId); }
};

struct Subsystem : Object {
  using Object::Object;
  Collection<Subsystem> Subsystems() const { return Get(members::kSubsystems); }
  Collection<AppDevice> AppDevices() const { return Get(members::kAppDevices); }
};

struct NetworkServiceDevice : Object {
  using Object::Object;
  /// Nothing in engineered mode.
  lns::NetworkInterface NetworkInterface() const { return Get(members::kNetworkInterface); }
  void SetNetworkInterface(const lns::NetworkInterface& network_interface) const {
    Put(members::kNetworkInterface, network_interface.reference());
  }
};

struct System : Object {
  using Object::Object;
  void Open() const { Call(members::kOpen); }
  void Close() const { Call(members::kClose); }
  bool IsOpen() const { return Get(members::kIsOpen); }
  Collection<Subsystem> Subsystems() const { return Get(members::kSubsystems); }
  lns::NetworkServiceDevice NetworkServiceDevice() const { return Get(members::kNetworkServiceDevice); }
  lns::TemplateLibrary TemplateLibrary() const { return Get(members::kTemplateLibrary); }
  lns::ComponentApps ComponentApps() const { return Get(members::kComponentApps); }
  std::string LdrfCatalogPath() const { return Get(members::kLdrfCatalogPath); }
  void SetDsPause(bool paused) const { Put(members::kDsPause, paused); }
  void SetDsMode(std::int32_t mode) const { Put(members::kDsMode, mode); }
  void BeginNssIdleEvent(std::int32_t milliseconds) const { Call(members::kBeginNssIdleEvent, milliseconds); }
};

struct Network : Object {
  using Object::Object;
  void Open() const { Call(members::kOpen); }
  void Close() const { Call(members::kClose); }
  bool IsOpen() const { return Get(members::kIsOpen); }
  Collection<System> Systems() const { return Get(members::kSystems); }
};

struct ObjectServer : Object {
  using Object::Object;
  void Open() const { Call(members::kServerOpen); }
  void Close() const { Call(members::kServerClose); }
  bool IsOpen() const { return Get(members::kServerIsOpen); }
  /// Its process or the connection has ended: none of its objects will answer again.
  bool IsLost() const;
  bool RemoteFlag() const { return Get(members::kRemoteFlag); }
  void SetRemoteFlag(bool remote) const { Put(members::kRemoteFlag, remote); }
  std::int32_t Flags() const { return Get(members::kFlags); }
  void SetFlags(std::int32_t flags) const { Put(members::kFlags, flags); }
  void SetOpenOption(bool value) const { Put(members::kOpenOption, value); }
  Collection<Network> Networks() const { return Get(members::kNetworks); }
  lns::ComponentApps ComponentApps() const { return Get(members::kComponentApps); }
  Collection<NetworkInterface> NetworkInterfaces() const { return Get(members::kNetworkInterfaces); }
  /// Newer object servers may lack it; they list all interfaces in NetworkInterfaces.
  Collection<NetworkInterface> RemoteNetworkInterfaces() const {
    return Get(members::kRemoteNetworkInterfaces);
  }
  void SetActiveRemoteNI(const NetworkInterface& network_interface) const {
    Put(members::kActiveRemoteNI, network_interface.reference());
  }
  std::unique_ptr<platform::Subscription> Advise(platform::EventHandler handler) const;
};

/// These subsystems of a system repeat devices of the others.
bool RepeatsDevices(std::string_view subsystem);

/// The error says that the object has no such member.
bool IsUnknownMember(const platform::Error& error);

/// For a member that an object server may lack. Other failures still throw.
template <class Call>
void SkipIfUnknown(Call&& call) {
  try {
    call();
  } catch (const platform::Error& error) {
    if (!IsUnknownMember(error)) throw;
  }
}

/// The device that an object belongs to, found through its parents; may be nothing.
AppDevice OwningDevice(const Object& object);

}  // namespace lns
