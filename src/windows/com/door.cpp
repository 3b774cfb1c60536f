#include "windows/com/door.h"

#include <unordered_map>

namespace windows::com {
namespace {

struct Doors {
  std::unordered_map<const automation::Published*, IDispatch*> by_object;
  std::unordered_map<const IDispatch*, std::weak_ptr<automation::Published>> by_door;
};

/// Never destroyed: the last doors are closed by COM when the process ends.
Doors& AllDoors() {
  static Doors& doors = *new Doors;
  return doors;
}

}  // namespace

OpenDoor::OpenDoor(const std::shared_ptr<automation::Published>& object, IDispatch* door)
    : object_(object.get()), door_(door) {
  AllDoors().by_object.emplace(object_, door);
  AllDoors().by_door.emplace(door_, object);
}

void OpenDoor::Close() noexcept {
  if (AllDoors().by_door.erase(door_) != 0) AllDoors().by_object.erase(object_);
}

ComPtr<IDispatch> FindDoor(const automation::Published& object) {
  const auto found = AllDoors().by_object.find(&object);
  return found == AllDoors().by_object.end() ? nullptr : ComPtr<IDispatch>(found->second);
}

std::shared_ptr<automation::Published> PublishedBehind(const IDispatch* door) {
  const auto found = AllDoors().by_door.find(door);
  return found == AllDoors().by_door.end() ? nullptr : found->second.lock();
}

}  // namespace windows::com
