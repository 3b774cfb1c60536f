#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/late_bound.h"

/// The object server's objects, one class for each role, over late-bound objects. An instance is a reference
/// as in a script: it may refer to nothing, copies share the object, and the last copy releases it.
///
/// Every operation is one call of the platform and throws its platform::Error. A call through a reference to
/// nothing throws 91, as in automation.
namespace lns {

class Object {
 public:
  Object() = default;
  explicit Object(platform::LateBoundPtr object) : object_(std::move(object)) {}

  explicit operator bool() const { return object_ != nullptr; }
  const platform::LateBoundPtr& reference() const { return object_; }
  friend bool operator==(const Object&, const Object&) = default;

  std::string Name() const;
  std::int32_t ClassId() const;
  /// The object through which this one was reached.
  Object Parent() const;

 protected:
  platform::Value Get(const platform::Member& member) const;
  platform::LateBoundPtr GetObject(const platform::Member& member) const;
  void Put(const platform::Member& member, platform::Value value) const;
  platform::Value Call(const platform::Member& member, platform::Arguments arguments = {}) const;
  /// The caller holds it: calls that arrive during its own may drop the last reference to the object.
  platform::LateBoundPtr Target() const;
  platform::Value Invoke(const platform::Member& member, platform::CallKind kind,
                         platform::Arguments arguments = {}) const;

 private:
  platform::LateBoundPtr object_;
};

/// A collection. Items count from 1; names are case-sensitive.
template <class T>
class Collection;

class CollectionBase : public Object {
 public:
  using Object::Object;
  std::int32_t Count() const;
  void Remove(std::int32_t ordinal) const;
  void Remove(const std::string& name) const;

 protected:
  platform::LateBoundPtr ItemAt(platform::Value key) const;
};

template <class T>
class Collection : public CollectionBase {
 public:
  using CollectionBase::CollectionBase;
  T Item(std::int32_t ordinal) const { return T(ItemAt(ordinal)); }
  T Item(const std::string& name) const { return T(ItemAt(name)); }

  /// A place in the collection, and the iterator over its places. Converting it fetches the item, so a loop
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

  /// The items in order: `for (const AppDevice device : devices.Items())`. Counts once.
  Entries Items() const { return {*this, Count()}; }
};

class NetworkInterface : public Object {
 public:
  using Object::Object;
};

/// A command of a plug-in, as directors find it on an object.
class ComponentApp : public Object {
 public:
  using Object::Object;
  std::int32_t CommandId() const;
  void SetCommandId(std::int32_t command) const;
  /// The class of the objects that the command works on.
  std::int32_t ComponentClassId() const;
  bool DefaultAppFlag() const;
  void SetDefaultAppFlag(bool is_default) const;
  void SetDescription(const std::string& description) const;
  /// The ProgID of the plug-in's automation class.
  std::string RegisteredServer() const;
  std::string VersionNumber() const;
  void SetVersionNumber(const std::string& version) const;
};

class ComponentApps : public Collection<ComponentApp> {
 public:
  using Collection::Collection;
  /// The result may refer to nothing.
  ComponentApp Add(const std::string& name, const std::string& registered_server,
                   std::int32_t class_id) const;
};

class NetworkVariable : public Object {
 public:
  using Object::Object;
  void SetAccessOption(std::int32_t option) const;
  std::string FormatType() const;
  void SetFormatType(const std::string& format) const;
  /// Polls the device and renders the value in the current format.
  std::string Value() const;
  /// Parses the text in the current format and sends the value to the device.
  void SetValue(const std::string& text) const;
};

class LonMarkObject : public Object {
 public:
  using Object::Object;
  /// The scope of the resource file that defines the object, from 0 (standard) to 6 (one model of one maker).
  std::int32_t Mode() const;
  void SetMode(std::int32_t scope) const;
  lns::ComponentApps ComponentApps() const;
};

class Interface : public Object {
 public:
  using Object::Object;
  Collection<NetworkVariable> NetworkVariables() const;
  Collection<LonMarkObject> LonMarkObjects() const;
  /// Copies the device's configuration to the network database.
  void UploadConfigProperties() const;
  /// Copies the network database's configuration to the device.
  void DownloadConfigProperties() const;
};

class DeviceTemplate : public Object {
 public:
  using Object::Object;
  std::string ProgramId() const;
  /// The interface of the devices of this type; its variables have no values.
  lns::Interface Interface() const;
  lns::ComponentApps ComponentApps() const;
  /// Takes the interface from an external interface file, in text or binary form. The object server must
  /// reach it.
  void Import(const std::string& path) const;
};

class DeviceTemplates : public Collection<DeviceTemplate> {
 public:
  using Collection::Collection;
  DeviceTemplate Add(const std::string& name) const;
};

class TemplateLibrary : public Object {
 public:
  using Object::Object;
  lns::DeviceTemplates DeviceTemplates() const;
};

class AppDevice : public Object {
 public:
  using Object::Object;
  lns::DeviceTemplate DeviceTemplate() const;
  lns::Interface Interface() const;
  std::int32_t AttachmentStatus() const;
  bool HasBeenCommissioned() const;
  /// Asks the device; members::kTestGood if it answers correctly.
  std::int32_t Test() const;
  std::int32_t State() const;
  std::string ProgramId() const;
  std::string NeuronId() const;
};

class Subsystem : public Object {
 public:
  using Object::Object;
  Collection<Subsystem> Subsystems() const;
  Collection<AppDevice> AppDevices() const;
};

class NetworkServiceDevice : public Object {
 public:
  using Object::Object;
  /// Nothing in engineered mode.
  lns::NetworkInterface NetworkInterface() const;
  void SetNetworkInterface(const lns::NetworkInterface& network_interface) const;
};

class System : public Object {
 public:
  using Object::Object;
  void Open() const;
  void Close() const;
  bool IsOpen() const;
  Collection<Subsystem> Subsystems() const;
  lns::NetworkServiceDevice NetworkServiceDevice() const;
  lns::TemplateLibrary TemplateLibrary() const;
  lns::ComponentApps ComponentApps() const;
  std::string LdrfCatalogPath() const;
  void SetDsPause(bool paused) const;
  void SetDsMode(std::int32_t mode) const;
  void BeginNssIdleEvent(std::int32_t milliseconds) const;
};

class Network : public Object {
 public:
  using Object::Object;
  void Open() const;
  void Close() const;
  bool IsOpen() const;
  Collection<System> Systems() const;
};

class ObjectServer : public Object {
 public:
  using Object::Object;
  void Open() const;
  void Close() const;
  bool IsOpen() const;
  /// Its process or the connection to it has ended: none of its objects will answer again.
  bool IsLost() const;
  bool RemoteFlag() const;
  void SetRemoteFlag(bool remote) const;
  std::int32_t Flags() const;
  void SetFlags(std::int32_t flags) const;
  void SetOpenOption(bool value) const;
  Collection<Network> Networks() const;
  lns::ComponentApps ComponentApps() const;
  Collection<NetworkInterface> NetworkInterfaces() const;
  /// Newer object servers may not know it; they list all interfaces in NetworkInterfaces.
  Collection<NetworkInterface> RemoteNetworkInterfaces() const;
  void SetActiveRemoteNI(const NetworkInterface& network_interface) const;
  std::unique_ptr<platform::Subscription> Advise(platform::EventHandler handler) const;
};

/// The error says that the object has no such member.
bool IsUnknownMember(const platform::Error& error);

/// For a member that an object server may not know. Other failures still throw.
template <class Call>
void SkipIfUnknown(Call&& call) {
  try {
    call();
  } catch (const platform::Error& error) {
    if (!IsUnknownMember(error)) throw;
  }
}

/// The device that an object belongs to, found through its parents; nothing if there is none.
AppDevice OwningDevice(const Object& object);

}  // namespace lns
