#include <gtest/gtest.h>

#include "registered_sample.h"
#include "sample.h"
#include "windows/com/dispatch_door.h"
#include "windows/com/dispatch_object.h"

namespace windows::com {
namespace {

using platform::CallKind;
using platform::LateBoundPtr;
using platform::Value;

using Way = std::pair<const char*, LateBoundPtr (*)()>;

/// What holds for a late-bound object however far away it is.
class LateBoundContract : public testing::TestWithParam<Way> {
 protected:
  Value Call(platform::Member member, CallKind kind, const std::vector<Value>& arguments = {}) {
    return sample_->Invoke(member, kind, arguments);
  }

  RegisteredSample registered_;
  LateBoundPtr sample_ = GetParam().second();
};

TEST_P(LateBoundContract, CallsAndAnswers) {
  const Value object = std::make_shared<SampleItems>();
  struct Case {
    platform::Member member;
    CallKind kind;
    std::vector<Value> arguments;
    std::string expected;
  } const cases[]{
      {{"vALUE"}, CallKind::Get, {}, "text sample"},
      {{"", 1}, CallKind::GetOrMethod, {}, "text sample"},
      {{"Value"}, CallKind::Put, {"\xE2\x82\xAC"}, "empty"},
      {{"Value"}, CallKind::Get, {}, "text \xE2\x82\xAC"},
      {{"Echo"}, CallKind::Method, {Value()}, "empty"},
      {{"Echo"}, CallKind::Method, {true}, "boolean True"},
      {{"Echo"}, CallKind::GetOrMethod, {-7}, "integer -7"},
      {{"Echo"}, CallKind::Method, {0.1}, "number 0.1"},
      {{"Value"}, CallKind::PutReference, {object}, "empty"},
      {{"Value"}, CallKind::Get, {"beta"}, "text beta"},
      {{"Value"}, CallKind::PutReference, {LateBoundPtr()}, "empty"},
      {{"Value"}, CallKind::Get, {}, "nothing"},
      {{"Throw"}, CallKind::Method, {20005, "Not found"}, "error 20005 Sample: Not found"},
      {{"Throw"}, CallKind::Method, {platform::ObjectServerError(18200), "!"}, "error -2147203304 Sample: !"},
      {{"Items"}, CallKind::Get, {4}, "refused 11"},
      {{"Nonesuch"}, CallKind::Get, {}, "refused 6"},
      {{"", 99}, CallKind::Get, {}, "refused 3"},
      {{"Echo"}, CallKind::Method, {1, 2}, "refused 14"},
      {{"Throw"}, CallKind::Method, {LateBoundPtr()}, "refused 5"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Outcome([&] { return Call(c.member, c.kind, c.arguments); }), c.expected) << c.member.name;
}

TEST_P(LateBoundContract, EventsArriveUntilTheSubscriptionEnds) {
  std::string heard;
  const auto listen = [&](std::int32_t event, platform::Arguments arguments) {
    heard += std::to_string(event);
    for (const Value& argument : arguments) heard += ", " + Describe(argument);
    // The busy object serves a handler that calls back.
    heard += " to " + Describe(Call({"Value"}, CallKind::Get)) + ";";
  };
  auto subscription = sample_->Advise(listen);
  const Value items = Call({"Items"}, CallKind::Get);
  EXPECT_EQ(Call({"Fire"}, CallKind::Method, {13, "value", items, 4}), Value(1));
  EXPECT_EQ(heard, "13, text value, object, integer 4 to text sample;");
  subscription.reset();
  EXPECT_EQ(Call({"Fire"}, CallKind::Method, {9}), Value(0));

  const auto silent = [&] { return std::get<LateBoundPtr>(items)->Advise(listen) ? 1 : 0; };
  EXPECT_EQ(Outcome(silent), "refused 1");
  subscription = sample_->Advise(listen);
  sample_.reset();
  EXPECT_NO_THROW(subscription.reset()) << "a subscription may outlive its object";
}

LateBoundPtr ThroughItsDoor() {
  return std::make_shared<DispatchObject>(DispatchDoor::For(std::make_shared<Sample>(), {Sample::kEvents}));
}

INSTANTIATE_TEST_SUITE_P(
    Ways, LateBoundContract,
    testing::Values(Way{"Directly", [] { return LateBoundPtr(std::make_shared<Sample>()); }},
                    Way{"ThroughItsDoor", ThroughItsDoor},
                    Way{"InAnotherProcess", [] { return CreateObject("Qm5r.ComSample"); }}),
    [](const auto& way) { return way.param.first; });

}  // namespace
}  // namespace windows::com
