#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace simulator::stored {

/// Items in order, found by name without a walk over all of them. Their names never change.
template <class T>
class NamedList {
 public:
  NamedList() = default;
  NamedList(std::initializer_list<T> items) : items_(items) {}

  auto begin() { return items_.begin(); }
  auto end() { return items_.end(); }
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }
  std::size_t size() const { return items_.size(); }
  bool empty() const { return items_.empty(); }
  T& operator[](std::size_t place) { return items_[place]; }
  const T& operator[](std::size_t place) const { return items_[place]; }
  T& back() { return items_.back(); }
  void push_back(T item) { items_.push_back(std::move(item)); }

  /// Null if there is none.
  T* Find(std::string_view name) { return const_cast<T*>(std::as_const(*this).Find(name)); }
  const T* Find(std::string_view name) const {
    for (; indexed_ < items_.size(); ++indexed_) places_.emplace(items_[indexed_].name, indexed_);
    const auto found = places_.find(name);
    return found == places_.end() ? nullptr : &items_[found->second];
  }

 private:
  struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
  };
  std::vector<T> items_;
  mutable std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> places_;
  mutable std::size_t indexed_ = 0;
};

template <class T>
T* FindByName(NamedList<T>& items, std::string_view name) {
  return items.Find(name);
}
template <class T>
const T* FindByName(const NamedList<T>& items, std::string_view name) {
  return items.Find(name);
}

}  // namespace simulator::stored
