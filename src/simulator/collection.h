#pragma once

#include <functional>
#include <string>

#include "simulator/object.h"

namespace simulator {

/// The position of an item chosen by its name (letter case matters) or by its ordinal from 1; 17006 if there
/// is none.
std::size_t FindItem(const stored::Names& names, Arguments arguments);

/// What every collection has. T names its items, and makes the one of a name.
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

/// A collection that clients add to and remove from. T adds what the arguments describe and returns its name.
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

/// A collection that only lists: what is in it and how its items are made is given to it.
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
