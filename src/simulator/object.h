#pragma once

#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "automation/convert.h"
#include "automation/published.h"
#include "simulator/session.h"

namespace simulator {

using automation::MemberRow;
using platform::Arguments;
using platform::LateBoundPtr;
using platform::Value;

/// The whole number of a value; 17090 outside the bounds.
std::int32_t WholeNumber(const Value& value, std::int32_t least,
                         std::int32_t most = std::numeric_limits<std::int32_t>::max());

/// What every object of a session is made with.
struct Origin {
  std::shared_ptr<Session> session;
  LateBoundPtr parent;  // the object through which this one was reached
  Place place;
  std::string network;  // the object works only while the system of this network is open; empty for others
};

/// An object of the platform: each call of a member is one operation of the session.
///
/// It keeps the objects above it alive, never those below, so that no circle arises.
template <class T>
class Simulated : public automation::PublishedTable<T>, public std::enable_shared_from_this<T> {
 public:
  explicit Simulated(Origin origin) : origin_(std::move(origin)) {}

  Value Invoke(const platform::Member& member, platform::CallKind kind, Arguments arguments) override {
    return session().Perform(Describe(member, kind, arguments), [&] {
      if (!origin_.network.empty()) session().RequireSystem(origin_.network);
      return automation::PublishedTable<T>::Invoke(member, kind, arguments);
    });
  }

  bool Offers(const MemberRow<T>& row) const { return strict().Knows(row.name, row.since); }
  bool OffersPut(const MemberRow<T>& row) const { return row.put && !strict().read_only.contains(row.name); }

  Session& session() { return *origin_.session; }
  const Strictness& strict() const { return origin_.session->installation().strict; }
  model::Installation& installation() { return session().installation(); }
  const LateBoundPtr& parent() const { return origin_.parent; }
  const Place& place() const { return origin_.place; }
  const std::string& network() const { return origin_.network; }

  /// A child in the same system, or in the one of `network`.
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

  /// The place of a part of this object that has no address of its own.
  Place PartPlace(const std::string& part) const {
    Place part_place = origin_.place;
    part_place.path += ":" + part;
    return part_place;
  }

 protected:
  /// After a new name was put; the address ends with the name. What was reached from this object goes on.
  void Rename(const std::string& name) {
    std::string& path = origin_.place.path;
    const Session::Key former{origin_.parent.get(), path};
    path.replace(path.size() - origin_.place.item.size(), std::string::npos, name);
    origin_.place.item = name;
    session().Move(former, {origin_.parent.get(), path});
  }

  /// The row that every class but the root ends with.
  static constexpr MemberRow<T> ParentRow(std::int32_t number) {
    return {number, "Parent", [](T& self, Arguments) -> Value { return self.parent(); }};
  }
  template <int kClass>
  static constexpr MemberRow<T> ClassRow(std::int32_t number) {
    return {number, "ClassId", [](T&, Arguments) -> Value { return kClass; }};
  }

 private:
  Operation Describe(const platform::Member& member, platform::CallKind kind, Arguments arguments) const {
    using platform::CallKind;
    Operation operation{origin_.place, std::string(member.name), OperationKind::Get, ""};
    const bool put = kind == CallKind::Put || kind == CallKind::PutReference;
    if (put) operation.kind = OperationKind::Put;
    for (const MemberRow<T>& row : T::Members()) {
      const bool found = member.number != platform::Member::kNoNumber
                             ? row.number == member.number
                             : text::EqualIgnoringCase(row.name, member.name);
      if (!found) continue;
      operation.member = row.name;
      if (!put && (kind == CallKind::Method || !row.get)) operation.kind = OperationKind::Method;
      break;
    }
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

}  // namespace simulator
