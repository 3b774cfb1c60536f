#pragma once

#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "model/catalogue.h"
#include "simulator/journal.h"
#include "support/user.h"

/// A small model of what an observer of the plug-in knows: what the device reported, what was typed, and what
/// is marked. It listens to the calls of the object server, and compares the screen with what it knows.
class Observer : protected World, protected User {
 protected:
  using Values = std::map<std::string, std::vector<std::string>>;
  using Texts = std::map<const ui::Control*, std::string>;
  using Kept = std::pair<std::string, bool>;  // text and mark when the field got the focus

  Observer() : User(static_cast<World&>(*this)) {}

  void Listen();
  /// Takes the values that were read: all of them, or those before a failure.
  void TakeRead(bool all);
  void Check();
  void Wrong(const std::string& what) { wrong_ += what + "\n"; }

  bool IsClosed() const { return StatusPanel(1) == "Closed"; }
  std::size_t Said() const { return desktop.messages.size() + log.lstActivity.Rows().size(); }

  std::string wrong_;
  Kept kept_;
  ui::Control* refused_ = nullptr;
  struct {
    Values reported;  // by point, from the last complete reading or later writes
    int reported_in = 0;
    Texts edits;
    std::set<const ui::Control*> applied;
  } known_;
  struct {
    std::array<Values, 3> read;  // in no units, SI and US
    Texts wanted, applied;
    int failures = 0;
    std::size_t said = 0;
    bool edited = false, switches = false, refreshes = false, complete = false, write_failed = false,
         explained = false;
  } step_;

 private:
  /// 0 for SI, 1 for US.
  int Caption() const { return main.screen.txtTempUnits()[0]->Text() == "\u00BAF"; }
  /// The number of an entry, clamped to the field's limits.
  double Entered(const model::CatalogueRow& row, const std::string& text) const;
  void Hear(const simulator::JournalEntry& entry);
  void HearWrite(const simulator::JournalEntry& entry, const std::vector<std::string>& values);
  void CheckField(const model::CatalogueRow& row, const ui::Control& field);
  /// Applied texts stay as typed until the next reading.
  bool Shows(const model::CatalogueRow& row, const ui::Control& field);

  std::map<std::string, std::string> format_;  // by the variable's path
};
