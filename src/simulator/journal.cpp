#include "simulator/journal.h"

#include "platform/error.h"

namespace simulator {

std::string JournalEntry::Text() const {
  std::string text = operation.place.path + " " + operation.member;
  if (operation.kind == OperationKind::Put) text += "=" + operation.value;
  if (operation.kind == OperationKind::Method ||
      (operation.kind == OperationKind::Get && !operation.value.empty()))
    text += "(" + operation.value + ")";
  if (!result.empty()) text += " -> " + result;
  const std::int64_t code = std::int64_t{error} - platform::kObjectServerErrorBase;
  const bool ours = code > 0 && code <= 0xFFFF;
  if (error != 0) text += " ! " + std::to_string(ours ? code : std::int64_t{error});
  return text;
}

std::size_t Journal::Begin(const Operation& operation) {
  if (entries_.size() == kMost) {
    entries_.pop_front();
    ++first_number_;
  }
  entries_.push_back({operation, "", 0});
  return first_number_ + entries_.size() - 1;
}

void Journal::Finish(std::size_t number, const std::string& result) {
  if (JournalEntry* entry = Find(number)) entry->result = result;
}

void Journal::Fail(std::size_t number, std::int32_t error) {
  if (JournalEntry* entry = Find(number)) entry->error = error;
}

std::string Journal::Text() const {
  std::string text;
  for (const JournalEntry& entry : entries_) text += entry.Text() + "\n";
  return text;
}

void Journal::Clear() {
  first_number_ += entries_.size();
  entries_.clear();
}

JournalEntry* Journal::Find(std::size_t number) {
  const bool held = number >= first_number_ && number - first_number_ < entries_.size();
  return held ? &entries_[number - first_number_] : nullptr;
}

}  // namespace simulator
