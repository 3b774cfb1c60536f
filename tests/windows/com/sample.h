#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automation/published.h"

/// An object with a member of every kind and a way to cause every kind of failure.
class Sample final : public automation::PublishedTable<Sample> {
 public:
  static constexpr CLSID kClass{0x98c8dc5b, 0x9904, 0x4ce4, {0x92, 0x31, 0x20, 0x94, 0x66, 0x95, 0x3d, 0x91}};
  static constexpr IID kEvents{0x4ddb0a4f, 0x270b, 0x4082, {0x88, 0x5e, 0x8c, 0xcf, 0x0a, 0x8f, 0x3f, 0x4a}};
  /// The mutex of a running sample server.
  static constexpr const wchar_t* kServing = L"Qm5r.ComSample.Serving";
  static std::span<const automation::MemberRow<Sample>> Members();
  /// The number of objects that ended on the threads that created them, and on others.
  static inline std::atomic<int> ended_at_home, ended_elsewhere;

  ~Sample() override { ++(GetCurrentThreadId() == home_ ? ended_at_home : ended_elsewhere); }
  std::unique_ptr<platform::Subscription> Advise(platform::EventHandler handler) override;
  /// Returns the number of handlers that got the event.
  std::int32_t Fire(std::int32_t event, platform::Arguments arguments = {});

 private:
  const DWORD home_ = GetCurrentThreadId();
  platform::Value value_ = "sample";
  std::vector<std::weak_ptr<platform::EventHandler>> handlers_;
};

class SampleItems final : public automation::PublishedTable<SampleItems> {
 public:
  static std::span<const automation::MemberRow<SampleItems>> Members();

  std::vector<std::string> items{"alpha", "beta", "gamma"};
};

/// The outcome as one line: "text sample", "integer 3", "error 20003 Source: Text". Automation's own refusals
/// show only their number, as their texts are the system's.
std::string Describe(const platform::Value& value);
std::string Outcome(const std::function<platform::Value()>& work);
