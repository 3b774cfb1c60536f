#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "platform/late_bound.h"
#include "text/strings.h"

namespace automation {

/// An object that this process offers to others: its members can be looked up by name.
class Published : public platform::LateBound {
 public:
  /// The number of a member; letter case does not matter, as in every script language.
  virtual std::optional<std::int32_t> MemberNumber(std::string_view name) const = 0;
};

/// One row of a published class: a property with its accessors, or a method. A member that is null does not
/// exist.
template <class T>
struct MemberRow {
  std::int32_t number;
  std::string_view name;
  platform::Value (*get)(T& self, platform::Arguments indices) = nullptr;
  void (*put)(T& self, const platform::Value& value) = nullptr;
  platform::Value (*method)(T& self, platform::Arguments arguments) = nullptr;
  /// How many indices (of a get) or arguments (of a method) the member takes.
  std::size_t least = 0;
  std::size_t most = least;
  /// The release of the class that has added the member, 320 for 3.20; 0 where every release has it.
  int since = 0;
};

/// A published object whose members are one table: `static std::span<const MemberRow<T>> Members()` of T.
///
/// A property that takes no index but is given one passes it on to the default member of the object it
/// returns, so that `server.Networks("name")` works in one call.
template <class T>
class PublishedTable : public Published {
 public:
  std::optional<std::int32_t> MemberNumber(std::string_view name) const override {
    for (const MemberRow<T>& row : T::Members())
      if (text::EqualIgnoringCase(row.name, name) && static_cast<const T&>(*this).Offers(row))
        return row.number;
    return std::nullopt;
  }

  platform::Value Invoke(const platform::Member& member, platform::CallKind kind,
                         platform::Arguments arguments) override {
    using platform::CallKind;
    T& self = static_cast<T&>(*this);
    const MemberRow<T>& row = Find(member);
    const bool takes_get = kind == CallKind::Get || kind == CallKind::GetOrMethod;
    const bool takes_method = kind == CallKind::Method || kind == CallKind::GetOrMethod;
    if (row.get && takes_get) return Get(self, row, arguments);
    if (row.method && takes_method) {
      CheckCount(arguments.size(), row.least, row.most);
      return row.method(self, arguments);
    }
    if (self.OffersPut(row) && (kind == CallKind::Put || kind == CallKind::PutReference)) {
      CheckCount(arguments.size(), 1, 1);
      row.put(self, arguments[0]);
      return {};
    }
    throw platform::Error(platform::kMemberNotFound, "Automation", "Member not found.");
  }

  /// Whether the member exists now, and as what: T may know better.
  bool Offers(const MemberRow<T>&) const { return true; }
  bool OffersPut(const MemberRow<T>& row) const { return row.put != nullptr; }

 private:
  const MemberRow<T>& Find(const platform::Member& member) const {
    for (const MemberRow<T>& row : T::Members()) {
      const bool found = member.number != platform::Member::kNoNumber
                             ? row.number == member.number
                             : text::EqualIgnoringCase(row.name, member.name);
      if (found && static_cast<const T&>(*this).Offers(row)) return row;
    }
    if (member.number != platform::Member::kNoNumber)
      throw platform::Error(platform::kMemberNotFound, "Automation", "Member not found.");
    throw platform::Error(platform::kUnknownName, "Automation", "Unknown name.");
  }

  static platform::Value Get(T& self, const MemberRow<T>& row, platform::Arguments arguments) {
    if (row.most == 0 && !arguments.empty()) {
      const platform::Value result = row.get(self, {});
      if (const auto* object = std::get_if<platform::LateBoundPtr>(&result); object && *object)
        return (*object)->Invoke({"", platform::kDefaultMember}, platform::CallKind::Get, arguments);
    }
    CheckCount(arguments.size(), row.least, row.most);
    return row.get(self, arguments);
  }

  static void CheckCount(std::size_t count, std::size_t least, std::size_t most) {
    if (count < least || count > most)
      throw platform::Error(platform::kBadArgumentCount, "Automation", "Wrong number of arguments.");
  }
};

}  // namespace automation
