#include "recording.h"

#include "platform/error.h"

namespace bench {

using platform::LateBoundPtr;
using platform::Value;

class Recording::Object : public headless::ForwardingObject {
 public:
  Object(Recording& recording, std::size_t number, LateBoundPtr inner)
      : ForwardingObject(std::move(inner)), recording_(recording), number_(number) {
    recording_.numbers_[this->inner().get()] = number_;
  }

 private:
  Value Forward(const platform::Member& member, platform::CallKind kind,
                platform::Arguments arguments) override {
    Call call{number_, std::string(member.name), member.number, kind, {}, {}};
    for (const Value& value : arguments) {
      const auto* object = std::get_if<LateBoundPtr>(&value);
      const bool known = object && *object && recording_.numbers_.contains(object->get());
      call.object_arguments.push_back(known ? recording_.numbers_.at(object->get()) : kNone);
      call.arguments.push_back(known ? Value() : value);
    }
    recording_.calls_.push_back(std::move(call));
    return ForwardingObject::Forward(member, kind, arguments);
  }

  LateBoundPtr Another(LateBoundPtr inner) override {
    const std::size_t number = recording_.objects_++;
    if (!recording_.calls_.empty()) recording_.calls_.back().answer = number;
    return std::make_shared<Object>(recording_, number, std::move(inner));
  }

  Recording& recording_;
  std::size_t number_;
};

LateBoundPtr Recording::Watch(LateBoundPtr object_server) {
  return std::make_shared<Object>(*this, 0, std::move(object_server));
}

void Recording::Player::Play(std::size_t first, std::size_t last) {
  for (std::size_t i = first; i < last; ++i) {
    const Call& call = recording_.calls_[i];
    const auto object = objects_.find(call.object);
    if (object == objects_.end() || !object->second) continue;
    std::vector<Value> arguments = call.arguments;
    for (std::size_t position = 0; position < arguments.size(); ++position)
      if (call.object_arguments[position] != kNone)
        arguments[position] = objects_[call.object_arguments[position]];
    platform::IgnoreFailure([&] {
      const Value answer = object->second->Invoke({call.name, call.number}, call.kind, arguments);
      if (const auto* given = std::get_if<LateBoundPtr>(&answer); given && call.answer != kNone)
        objects_[call.answer] = *given;
    });
  }
}

}  // namespace bench
