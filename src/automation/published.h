#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

#include "platform/late_bound.h"
#include "text/strings.h"

namespace automation {

/// An object that this process offers to clients, which look up its members by name.
class Published : public platform::LateBound {
 public:
  /// The number of a member. Letter case does not matter, as in script languages.
  virtual std::optional<std::int32_t> MemberNumber(std::string_view name) const = 0;
};

/// One member of a published class, made by PublishedTable. A null accessor does not exist.
template <class T>
struct MemberRow {
  std::int32_t number;
  std::string_view name;
  platform::Value (*get)(T& self, platform::Arguments indices) = nullptr;
  void (*put)(T& self, const platform::Value& value) = nullptr;
  platform::Value (*method)(T& self, platform::Arguments arguments) = nullptr;
  /// The number of indices (of a get) or arguments (of a method).
  std::size_t least = 0;
  std::size_t most = 0;
  /// The release of the class that added the member, 320 for 3.20; 0 if every release has it.
  int since = 0;

  constexpr MemberRow Since(int release) const {
    MemberRow row = *this;
    row.since = release;
    return row;
  }
  /// With a setter.
  template <void (T::*kSet)(const platform::Value& value)>
  constexpr MemberRow Set() const {
    MemberRow row = *this;
    row.put = [](T& self, const platform::Value& value) { (self.*kSet)(value); };
    return row;
  }
};

/// A published object whose members are one table: `static std::span<const MemberRow<T>> Members()` of T.
///
/// A property without indices that gets one passes it to the default member of the object it returns, so
/// `server.Networks("name")` works in one call.
template <class T>
class PublishedTable : public Published {
 public:
  using Row = MemberRow<T>;
  using Put = void (*)(T& self, const platform::Value& value);

  /// A function of T for the rows: a member, or a free function that takes a T.
  template <auto kWork>
  struct Invoking {
    template <class... Given>
    auto operator()(T& self, Given... given) const -> decltype(std::invoke(kWork, self, given...)) {
      return std::invoke(kWork, self, given...);
    }
  };
  template <auto kWork>
  static constexpr Invoking<kWork> Of{};

  /// The rows of a table. The callables capture nothing; they may omit the arguments and return nothing.
  template <class Get>
  static constexpr Row Property(std::int32_t number, std::string_view name, Get, Put put = nullptr) {
    return {number, name, Call<Get>, put};
  }
  static constexpr Row PutOnly(std::int32_t number, std::string_view name, Put put) {
    return {number, name, nullptr, put};
  }
  template <class Get>
  static constexpr Row Indexed(std::int32_t number, std::string_view name, Get) {
    return {number, name, Call<Get>, nullptr, nullptr, 1, 1};
  }
  template <class Work>
  static constexpr Row Function(std::int32_t number, std::string_view name, Work, std::size_t least = 0,
                                std::size_t most = 0) {
    return {number, name, nullptr, nullptr, Call<Work>, least, std::max(least, most)};
  }

  std::optional<std::int32_t> MemberNumber(std::string_view name) const override {
    for (const Row& row : T::Members())
      if (text::EqualIgnoringCase(row.name, name) && static_cast<const T&>(*this).Offers(row))
        return row.number;
    return std::nullopt;
  }

  platform::Value Invoke(const platform::Member& member, platform::CallKind kind,
                         platform::Arguments arguments) override {
    return Invoke(Find(member), member, kind, arguments);
  }

  /// The member exists now; it can be set. T may hide these functions.
  bool Offers(const Row&) const { return true; }
  bool OffersPut(const Row& row) const { return row.put != nullptr; }

 protected:
  /// The row of a member that exists now, or null.
  const Row* Find(const platform::Member& member) const {
    for (const Row& row : T::Members()) {
      const bool found = member.number != platform::Member::kNoNumber
                             ? row.number == member.number
                             : text::EqualIgnoringCase(row.name, member.name);
      if (found && static_cast<const T&>(*this).Offers(row)) return &row;
    }
    return nullptr;
  }

  platform::Value Invoke(const Row* row, const platform::Member& member, platform::CallKind kind,
                         platform::Arguments arguments) {
    using platform::CallKind;
    if (!row && member.number == platform::Member::kNoNumber)
      throw platform::Error(platform::kUnknownName, "Automation", "Unknown name.");
    T& self = static_cast<T&>(*this);
    const bool takes_get = kind == CallKind::Get || kind == CallKind::GetOrMethod;
    const bool takes_method = kind == CallKind::Method || kind == CallKind::GetOrMethod;
    if (row && row->get && takes_get) return Get(self, *row, arguments);
    if (row && row->method && takes_method) {
      CheckCount(arguments.size(), row->least, row->most);
      return row->method(self, arguments);
    }
    if (row && self.OffersPut(*row) && (kind == CallKind::Put || kind == CallKind::PutReference)) {
      CheckCount(arguments.size(), 1, 1);
      row->put(self, arguments[0]);
      return {};
    }
    throw platform::Error(platform::kMemberNotFound, "Automation", "Member not found.");
  }

 private:
  template <class Work>
  static platform::Value Call(T& self, platform::Arguments arguments) {
    const auto call = [&] {
      if constexpr (std::is_invocable_v<Work, T&>)
        return Work()(self);
      else
        return Work()(self, arguments);
    };
    if constexpr (std::is_void_v<decltype(call())>)
      return call(), platform::Value();
    else
      return call();
  }

  static platform::Value Get(T& self, const Row& row, platform::Arguments arguments) {
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
