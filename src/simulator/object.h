#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "automation/convert.h"
#include "automation/published.h"
#include "simulator/client_session.h"

namespace simulator {

using automation::MemberRow;
using platform::Arguments;
using platform::LateBoundPtr;
using platform::Value;

/// The whole number of a value. Throws 17090 outside the bounds.
std::int32_t WholeNumber(const Value& value, std::int32_t least,
                         std::int32_t most = std::numeric_limits<std::int32_t>::max());

/// The platform's class numbers.
enum class Class : std::int32_t {
  ObjectServer = 0,
  Network = 1,
  Networks = 2,
  System = 3,
  Systems = 4,
  Subsystem = 5,
  Subsystems = 6,
  AppDevice = 7,
  AppDevices = 8,
  NetworkInterface = 14,
  NetworkInterfaces = 15,
  Interface = 19,
  NetworkVariable = 22,
  NetworkVariables = 23,
  LonMarkObject = 28,
  LonMarkObjects = 29,
  ComponentApp = 30,
  ComponentApps = 31,
  DeviceTemplate = 36,
  DeviceTemplates = 37,
  NetworkServiceDevice = 40
};

/// The common data of all objects of a session.
struct Origin {
  std::shared_ptr<ClientSession> session;
  LateBoundPtr parent;  // the object that led to this one
  Place place;
  std::string network;  // works only while this network's system is open; may be empty
};

/// An object of the platform. Each call of a member is one operation of the session.
///
/// It keeps its parents alive, never its children, so there are no cycles.
template <class T>
class Simulated : public automation::PublishedTable<T>, public std::enable_shared_from_this<T> {
 public:
  using typename automation::PublishedTable<T>::Row;
  using automation::PublishedTable<T>::Property;

  explicit Simulated(Origin origin) : origin_(std::move(origin)) {}

  Value Invoke(const platform::Member& member, platform::CallKind kind, Arguments arguments) override {
    const Row* const row = this->Find(member);
    return session().Perform(Describe(row, member, kind, arguments), [&] {
      if (!origin_.network.empty()) session().RequireSystem(origin_.network);
      return automation::PublishedTable<T>::Invoke(row, member, kind, arguments);
    });
  }

  bool Offers(const Row& row) const { return strict().Knows(row.name, row.since); }
  bool OffersPut(const Row& row) const { return row.put && !strict().read_only.contains(row.name); }

  ClientSession& session() { return *origin_.session; }
  const Strictness& strict() const { return origin_.session->installation().strict; }
  stored::Installation& installation() { return session().installation(); }
  const LateBoundPtr& parent() const { return origin_.parent; }
  const Place& place() const { return origin_.place; }
  const std::string& network() const { return origin_.network; }

  /// A child in the same system, or in that of `network`.
  template <class Child, class... More>
  LateBoundPtr Make(Place place, const More&... more) {
    return MakeIn<Child>(origin_.network, std::move(place), more...);
  }
  template <class Child, class... More>
  LateBoundPtr MakeIn(const std::string& network, Place place, const More&... more) {
    return session().Shared({this, place.path}, [&] {
      return std::make_shared<Child>(Origin{origin_.session, this->shared_from_this(), place, network},
                                     more...);
    });
  }

  /// The place of a part of this object that has no address.
  Place PartPlace(const std::string& part) const {
    Place part_place = origin_.place;
    part_place.path += ":" + part;
    return part_place;
  }

 protected:
  /// Updates the address, which ends with the name. Child objects stay valid.
  void Rename(const std::string& name) {
    std::string& path = origin_.place.path;
    const ClientSession::Key former{origin_.parent.get(), path};
    path.replace(path.size() - origin_.place.item.size(), std::string::npos, name);
    origin_.place.item = name;
    session().Move(former, {origin_.parent.get(), path});
  }

  /// A property from the network file: a member of T::Data()'s result.
  template <auto kField>
  static constexpr Row Stored(std::int32_t number, std::string_view name) {
    return Property(number, name, [](T& self) { return self.Data().*kField; });
  }
  /// A property that can also be set. Whole numbers must be within the limits.
  template <auto kField, std::int32_t kLeast = 0,
            std::int32_t kMost = std::numeric_limits<std::int32_t>::max()>
  static constexpr Row Setting(std::int32_t number, std::string_view name) {
    Row row = Stored<kField>(number, name);
    row.put = [](T& self, const Value& value) {
      auto& field = self.Data().*kField;
      using Type = std::remove_reference_t<decltype(field)>;
      if constexpr (std::is_same_v<Type, bool>)
        field = automation::ToBoolean(value);
      else if constexpr (std::is_same_v<Type, std::string>)
        field = automation::ToText(value);
      else
        field = WholeNumber(value, kLeast, kMost);
      self.session().simulation().MarkChanged();
    };
    return row;
  }

  /// The last rows of every class except the root.
  static constexpr Row ParentRow(std::int32_t number) {
    return Property(number, "Parent", [](T& self) { return self.parent(); });
  }
  template <Class kClass>
  static constexpr Row ClassRow(std::int32_t number) {
    return Property(number, "ClassId", [](T&) { return static_cast<std::int32_t>(kClass); });
  }

 private:
  Operation Describe(const Row* row, const platform::Member& member, platform::CallKind kind,
                     Arguments arguments) const {
    using platform::CallKind;
    Operation operation{origin_.place, std::string(row ? row->name : member.name), OperationKind::Get, ""};
    const bool put = kind == CallKind::Put || kind == CallKind::PutReference;
    if (put)
      operation.kind = OperationKind::Put;
    else if (row && (kind == CallKind::Method || !row->get))
      operation.kind = OperationKind::Method;
    for (const Value& argument : arguments) {
      if (!operation.value.empty()) operation.value += ", ";
      const bool object = std::holds_alternative<LateBoundPtr>(argument);
      operation.value +=
          object ? (std::get<LateBoundPtr>(argument) ? "object" : "nothing") : automation::ToText(argument);
    }
    return operation;
  }

  Origin origin_;
};

/// An ordinal as a position from 0; an impossible one is larger than any collection.
std::size_t PlaceOf(const Value& ordinal);
/// Throws 17006 about an ordinal or a name.
[[noreturn]] void FailNoItem(const Value& key);

/// The position of an item by name (case-sensitive) or ordinal from 1. Throws 17006 if there is none.
std::size_t FindItem(const stored::Names& names, Arguments arguments);

/// The common part of all collections. T lists its items' names and creates an item from its name.
template <class T>
class NamedItems : public Simulated<T> {
 public:
  using Simulated<T>::Simulated;

 protected:
  static constexpr MemberRow<T> ItemRow() {
    return NamedItems::Indexed(0, "Item", NamedItems::template Of<&NamedItems::Choose>);
  }
  static constexpr MemberRow<T> CountRow() {
    return NamedItems::Property(1, "Count",
                                [](T& self) { return static_cast<std::int32_t>(self.Names().size()); });
  }
  LateBoundPtr Choose(Arguments key) {
    T& self = static_cast<T&>(*this);
    return self.Item(Chosen(self, key));
  }
  static std::string Chosen(T& self, Arguments key) {
    const stored::Names names = self.Names();
    return std::string(names[FindItem(names, key)]);
  }
};

/// A collection that clients can change. T adds an item from the arguments and returns its name.
template <class T>
class EditableCollection : public NamedItems<T> {
 public:
  using NamedItems<T>::NamedItems;

  static std::span<const MemberRow<T>> Members() {
    using Base = EditableCollection;
    static const MemberRow<T> kRows[] = {
        Base::ItemRow(),
        Base::CountRow(),
        Base::template ClassRow<T::kClass>(2),
        Base::ParentRow(3),
        Base::Function(
            4, "Add",
            [](T& self, Arguments arguments) {
              const std::string name = self.Add(arguments);
              self.session().simulation().MarkChanged();
              return Value(self.Item(name));
            },
            T::kAddArguments),
        Base::Function(
            5, "Remove",
            [](T& self, Arguments key) {
              self.Remove(Base::Chosen(self, key));
              self.session().simulation().MarkChanged();
            },
            1),
    };
    return kRows;
  }
};

/// A read-only collection. `names` lists its items and `make` creates them.
class Collection : public NamedItems<Collection> {
 public:
  using NameItems = std::function<stored::Names(Collection&)>;
  using MakeItem = std::function<LateBoundPtr(Collection&, const std::string& name)>;

  Collection(Origin origin, Class class_id, NameItems names, MakeItem make)
      : NamedItems(std::move(origin)),
        class_id_(class_id),
        names_(std::move(names)),
        make_(std::move(make)) {}

  static std::span<const MemberRow<Collection>> Members();

  stored::Names Names() { return names_(*this); }
  LateBoundPtr Item(const std::string& name) { return make_(*this, name); }

 private:
  Class class_id_;
  NameItems names_;
  MakeItem make_;
};

}  // namespace simulator
