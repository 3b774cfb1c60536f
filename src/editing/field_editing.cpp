#include "editing/field_editing.h"

#include <algorithm>
#include <array>

#include "platform/raised.h"
#include "startup/identity.h"
#include "text/numbers.h"

namespace editing {
namespace {

// Accept whole numbers only. Field 18 does and its neighbour 19 does not, deliberately.
constexpr std::array kWholeNumberFields = {7, 8, 9, 17, 18};

constexpr int kPageUp = 33;
constexpr int kPageDown = 34;

constexpr const char* kDeadBandSentence = "The deadband limitation was not respected.";
// Deliberately also shown for the cooling minimum.
constexpr const char* kLimitSentence = "Heating maximum limit was not respected.";

double StepFor(int state) {
  if (state == 0) return 0.5;
  if (state == ui::kShift) return 10;
  return 1;
}

}  // namespace

FieldEditing::FieldEditing(model::ConfigurationScreen& screen, PendingEdits& pending,
                           const std::shared_ptr<OpenDevice>& device, std::function<void()> apply,
                           std::function<bool()> is_busy)
    : screen_(screen),
      pending_(pending),
      device_(device),
      apply_(std::move(apply)),
      is_busy_(std::move(is_busy)) {
  for (int index = 0; index < model::ConfigurationScreen::kTextFieldCount; ++index)
    if (ui::TextField* field = screen_.txtNvi(index)) Connect(index, *field);
  for (int index = 0; index < model::kChoiceListCount; ++index) Connect(*screen_.cbNvi(index));
}

void FieldEditing::Connect(int index, ui::TextField& field) {
  field.on_lost_focus = [this, index] { LeaveField(index); };
  field.on_got_focus = [this, &field] {
    if (!field.Locked()) pending_.Keep(field);
  };
  field.on_key_down = [this, &field](int key, int state) { return KeyDown(field, key, state); };
  field.on_key_press = [this, index, &field](char32_t character) {
    return KeyPress(index, field, character);
  };
  // Another program may write into any field.
  field.on_change = [this, &field] {
    if (!field.Locked()) pending_.Mark(field);
  };
  field.on_validate = [this, &field] { Validate(field); };
  OfferPutBack(field);
}

void FieldEditing::OfferPutBack(ui::Field& field) {
  field.can_put_back = [this, &field] {
    return !is_busy_() && !field.Locked() && PendingEdits::IsMarked(field);
  };
  field.on_put_back = [this, &field] { device_->PutBack(field); };
}

bool FieldEditing::KeyDown(ui::TextField& field, int key, int state) {
  if (field.Locked() || (key != kPageUp && key != kPageDown)) return false;
  const auto number = text::ParseNumber(field.Text());
  if (!number) return false;
  const double step = key == kPageUp ? StepFor(state) : -StepFor(state);
  pending_.Mark(field);
  field.SetText(text::ComputedText(text::RoundToDecimals(*number + step, 1)));
  return true;
}

/// Deliberately marks the field even for a refused character: the mark, not the text, decides what is
/// applied.
bool FieldEditing::KeyPress(int index, ui::TextField& field, char32_t character) {
  constexpr char32_t kBackspace = 8;
  if (field.Locked()) return false;
  const bool whole = std::ranges::find(kWholeNumberFields, index) != kWholeNumberFields.end();
  const bool accepted = character == kBackspace || character == U'-' || character == U':' ||
                        (character >= U'0' && character <= U'9') || (character == U'.' && !whole);
  pending_.Mark(field);
  return accepted;
}

/// Never refuses an unchanged text.
void FieldEditing::Validate(ui::TextField& field) {
  if (field.Locked() || field.Text() == field.Tag() || text::IsNumeric(field.Text())) return;
  device_->WhileItStands([this, &field, device = device_] {
    device->SayNotNumerical();
    pending_.PutBack(field);
  });
}

void FieldEditing::LeaveField(int index) {
  device_->WhileItStands([this, index] {
    for (const model::CrossRule& rule : model::CrossRulesOf(index)) Keep(rule);
  });
}

void FieldEditing::Keep(const model::CrossRule& rule) {
  ui::TextField& field = *screen_.txtNvi(rule.repaired);
  const auto repair = model::RepairOf(rule, [this](int index) { return screen_.txtNvi(index)->Text(); });
  if (!repair || field.Locked()) return;
  if (repair->text) {
    field.SetText(*repair->text);
    pending_.Mark(field);
    if (!entering_) field.SetFocus();
  }
  // "where" is deliberate.
  device_->Ask(
      {std::string(rule.IsDeadBand() ? kDeadBandSentence : kLimitSentence) + "\r\n\r\n" +
           (repair->text ? "Adjustment where made" : "No adjustment was made: the value has too many digits"),
       startup::kProgramTitle});
}

void FieldEditing::Enter(const std::vector<Entry>& entries) {
  const platform::Raised entering(entering_);
  std::vector<const Entry*> in_order;
  for (const Entry& entry : entries) {
    ui::Control& field = *screen_.Find(entry.row->control);
    field.SetText(entry.text);
    pending_.Mark(field);
    in_order.push_back(&entry);
  }
  std::ranges::sort(in_order, {}, &Entry::row);
  const auto device = device_;
  device->WhileItStands([&] {
    for (const Entry* entry : in_order) {
      if (entry->row->control.array != model::ScreenArray::txtNvi) continue;
      LeaveField(entry->row->control.index);
      device->Outside([] {});  // another device may have come during a message
    }
  });
}

void FieldEditing::Connect(ui::ChoiceList& list) {
  list.on_drop_down = list.on_change = [this, &list] {
    if (!list.Locked()) pending_.Mark(list);
  };
  list.on_key_down = [this, &list](int key, int state) { return KeyDown(list, key, state); };
  OfferPutBack(list);
}

bool FieldEditing::KeyDown(ui::ChoiceList& list, int key, int state) {
  constexpr int kEnter = 13, kEscape = 27;
  constexpr std::array kKeysThatCannotChoose = {9 /*Tab*/,        16 /*Shift*/, 17 /*Ctrl*/, 18 /*Alt*/,
                                                20 /*Caps Lock*/, 93 /*menu*/,  112 /*F1*/};
  if (key == kEnter) {
    apply_();
    return true;
  }
  if (key == kEscape && device_->StopRefresh()) return true;
  const bool turns_page = (state & ui::kCtrl) && (key == kPageUp || key == kPageDown);
  const bool may_choose = std::ranges::find(kKeysThatCannotChoose, key) == kKeysThatCannotChoose.end();
  if (may_choose && !turns_page && !list.Locked()) pending_.Mark(list);
  return false;
}

}  // namespace editing
