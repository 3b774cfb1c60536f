#include "registration/place.h"

#include "platform/attempt.h"

namespace registration {

const std::string& Place::Name() const {
  if (!name_) name_ = NameOf(object_);
  return *name_;
}

std::string Place::Text() const {
  std::string text = kind_;
  if (!Name().empty()) text += " " + Name();
  return owner_ ? text + " of " + owner_->Text() : text;
}

std::string NameOf(const lns::Object& object) {
  std::string name = "?";
  platform::Attempt([&] { name = object.Name(); });
  return name;
}

}  // namespace registration
