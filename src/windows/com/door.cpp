#include "windows/com/door.h"

#include <unordered_map>
#include <utility>

namespace windows::com {
namespace {

struct Doors {
  std::unordered_map<const automation::Published*, IDispatch*> by_object;
  std::unordered_map<const IDispatch*, OpenDoor*> by_door;
};

/// Those of this thread. Never destroyed: where a process ends without leaving its apartment, COM closes the
/// last doors.
Doors& AllDoors() {
  thread_local Doors& doors = *new Doors;
  return doors;
}

}  // namespace

OpenDoor::OpenDoor(std::shared_ptr<automation::Published> object, IDispatch* door)
    : object_(std::move(object)), door_(door) {
  AllDoors().by_object.emplace(object_.get(), door_);
  AllDoors().by_door.emplace(door_, this);
}

void OpenDoor::Hide() noexcept {
  if (AllDoors().by_door.erase(door_) != 0) AllDoors().by_object.erase(object_.get());
}

void OpenDoor::Close() noexcept {
  Hide();
  // An object that ends may ask whether any is used, and calls come in meanwhile.
  use_.reset();
  std::exchange(object_, nullptr).reset();
}

void CloseAllDoors() noexcept {
  while (!AllDoors().by_door.empty()) AllDoors().by_door.begin()->second->Close();
}

ComPtr<IDispatch> FindDoor(const automation::Published& object) {
  const auto found = AllDoors().by_object.find(&object);
  return found == AllDoors().by_object.end() ? nullptr : ComPtr<IDispatch>(found->second);
}

std::shared_ptr<automation::Published> PublishedBehind(const IDispatch* door) {
  const auto found = AllDoors().by_door.find(door);
  return found == AllDoors().by_door.end() ? nullptr : found->second->object();
}

}  // namespace windows::com
