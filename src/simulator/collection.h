#pragma once

#include <functional>
#include <string>
#include <vector>

#include "simulator/object.h"

namespace simulator {

/// The position of an item chosen by its name (letter case matters) or by its ordinal from 1; 17006 where
/// there is none.
std::size_t FindItem(const std::vector<std::string>& names, Arguments arguments);

/// A collection that only lists: what is in it and how its items are made is given to it.
class Collection : public Simulated<Collection> {
 public:
  using Names = std::function<std::vector<std::string>(Collection&)>;
  using MakeItem = std::function<LateBoundPtr(Collection&, std::size_t index)>;

  Collection(Origin origin, int class_id, Names names, MakeItem make)
      : Simulated(std::move(origin)), class_id_(class_id), names_(std::move(names)), make_(std::move(make)) {}

  static std::span<const MemberRow<Collection>> Members();

 private:
  int class_id_;
  Names names_;
  MakeItem make_;
};

}  // namespace simulator
