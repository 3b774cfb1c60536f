#include "editing/field_editing.h"

#include <algorithm>
#include <array>

#include "startup/identity.h"
#include "text/numbers.h"

namespace editing {
namespace {

// The fields that the rules are about, by their index in txtNvi.
enum Field : int {
  kOccupiedHeat = 0,
  kUnoccupiedHeat = 1,
  kHeatMax = 2,
  kOccupiedCool = 3,
  kUnoccupiedCool = 4,
  kCoolMin = 5,
  kDeadBand = 16,
};

// Whole numbers only. Field 18 is one of them and its neighbour 19 is not, deliberately.
constexpr std::array kWholeNumberFields = {7, 8, 9, 17, 18};

constexpr int kPageUp = 33;
constexpr int kPageDown = 34;

constexpr const char* kDeadBandSentence = "The deadband limitation was not respected.";
// Told for the cooling minimum as well; there is no other sentence. Deliberate.
constexpr const char* kLimitSentence = "Heating maximum limit was not respected.";

double StepFor(int state) {
  if (state == 0) return 0.5;
  if (state == ui::kShift) return 10;
  return 1;
}

double Rounded(double value) { return text::RoundToDecimals(value, 6); }

}  // namespace

FieldEditing::FieldEditing(model::ConfigurationScreen& screen, ui::Desktop& desktop, PendingEdits& pending)
    : screen_(screen), desktop_(desktop), pending_(pending) {
  for (int index = 0; index < model::ConfigurationScreen::kTextFieldCount; ++index)
    if (ui::TextField* field = screen_.txtNvi(index)) Connect(index, *field);
}

void FieldEditing::Connect(int index, ui::TextField& field) {
  field.on_lost_focus = [this, index] { LeaveField(index); };
  if (field.Locked()) return;
  field.on_got_focus = [&field] { field.SetTag(field.Text()); };
  field.on_key_down = [this, &field](int key, int state) { return KeyDown(field, key, state); };
  field.on_key_press = [this, index, &field](char32_t character) {
    return KeyPress(index, field, character);
  };
  field.on_change = [this, &field] { pending_.Mark(field); };
  field.on_validate = [this, &field] { Validate(field); };
}

bool FieldEditing::KeyDown(ui::TextField& field, int key, int state) {
  if (key != kPageUp && key != kPageDown) return false;
  const auto number = text::ParseNumber(field.Text());
  if (!number) return false;
  const double step = key == kPageUp ? StepFor(state) : -StepFor(state);
  pending_.Mark(field);
  field.SetText(text::ComputedText(text::RoundToDecimals(*number + step, 1)));
  return true;
}

/// A refused character marks the field all the same: the mark, not the text, decides what is applied.
/// Deliberate.
bool FieldEditing::KeyPress(int index, ui::TextField& field, char32_t character) {
  constexpr char32_t kBackspace = 8;
  const bool is_separator = character == U'.' || character == static_cast<char32_t>(text::DecimalSeparator());
  const bool whole = std::ranges::find(kWholeNumberFields, index) != kWholeNumberFields.end();
  const bool accepted = character == kBackspace || character == U'-' || character == U':' ||
                        (character >= U'0' && character <= U'9') || (is_separator && !whole);
  pending_.Mark(field);
  return accepted;
}

void FieldEditing::Validate(ui::TextField& field) {
  const std::string refused = field.Text();
  if (text::IsNumeric(refused)) return;
  desktop_.ShowMessage({"Value must be numerical", "Invalid value", ui::Icon::Exclamation});
  // Another device may have taken the screen while the message was shown.
  if (field.Text() != refused) return;
  field.SetText(field.Tag());
  PendingEdits::Unmark(field);
}

void FieldEditing::LeaveField(int index) {
  switch (index) {
    case kOccupiedHeat:
      return KeepDeadBandByCooling(kOccupiedHeat, kOccupiedCool);
    case kUnoccupiedHeat:
      return KeepDeadBandByCooling(kUnoccupiedHeat, kUnoccupiedCool);
    case kOccupiedCool:
      return KeepDeadBandByHeating(kOccupiedHeat, kOccupiedCool);
    case kUnoccupiedCool:
      return KeepDeadBandByHeating(kUnoccupiedHeat, kUnoccupiedCool);
    case kDeadBand:
      KeepDeadBandByHeating(kOccupiedHeat, kOccupiedCool);
      return KeepDeadBandByHeating(kUnoccupiedHeat, kUnoccupiedCool);
    case kHeatMax:
      KeepLimit(kHeatMax, kOccupiedHeat, true);
      return KeepLimit(kHeatMax, kUnoccupiedHeat, true);
    case kCoolMin:
      KeepLimit(kCoolMin, kOccupiedCool, false);
      return KeepLimit(kCoolMin, kUnoccupiedCool, false);
    default:
      return;
  }
}

double FieldEditing::NumberOf(int index) const { return text::LeadingNumber(screen_.txtNvi(index)->Text()); }

bool FieldEditing::DeadBandViolated(int heat, int cool) const {
  return Rounded(NumberOf(kDeadBand)) > Rounded(NumberOf(cool) - NumberOf(heat));
}

void FieldEditing::KeepDeadBandByCooling(int heat, int cool) {
  if (DeadBandViolated(heat, cool))
    Adjust(cool, text::ComputedText(NumberOf(heat) + NumberOf(kDeadBand)), kDeadBandSentence);
}

void FieldEditing::KeepDeadBandByHeating(int heat, int cool) {
  if (DeadBandViolated(heat, cool))
    Adjust(heat, text::ComputedText(NumberOf(cool) - NumberOf(kDeadBand)), kDeadBandSentence);
}

void FieldEditing::KeepLimit(int limit, int setpoint, bool is_maximum) {
  const double beyond = Rounded(NumberOf(setpoint) - NumberOf(limit));
  if (is_maximum ? beyond > 0 : beyond < 0) Adjust(setpoint, screen_.txtNvi(limit)->Text(), kLimitSentence);
}

void FieldEditing::Adjust(int index, const std::string& text, const char* sentence) {
  ui::TextField& field = *screen_.txtNvi(index);
  field.SetText(text);
  pending_.Mark(field);
  field.SetFocus();
  // "where" is deliberate.
  desktop_.ShowMessage({std::string(sentence) + "\r\n\r\nAdjustment where made", startup::kProgramTitle});
}

void ConnectLists(model::ConfigurationScreen& screen, PendingEdits& pending,
                  const std::function<void()>& apply) {
  constexpr int kEnter = 13;
  constexpr std::array kKeysThatCannotChoose = {9 /*Tab*/, 16 /*Shift*/, 17 /*Ctrl*/, 18 /*Alt*/, 112 /*F1*/};
  for (int index = 0; index < model::kChoiceListCount; ++index) {
    ui::ChoiceList& list = *screen.cbNvi(index);
    const auto mark = [&pending, &list] { pending.Mark(list); };
    list.on_drop_down = mark;
    list.on_change = mark;
    list.on_key_down = [=](int key, int state) {
      if (key == kEnter) {
        apply();
        return true;
      }
      const bool turns_page = (state & ui::kCtrl) && (key == kPageUp || key == kPageDown);
      if (!turns_page && std::ranges::find(kKeysThatCannotChoose, key) == kKeysThatCannotChoose.end()) mark();
      return false;
    };
  }
}

}  // namespace editing
