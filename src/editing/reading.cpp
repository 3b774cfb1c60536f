// The passes of a device that read it and show what was read.

#include "editing/open_device.h"
#include "lns/members.h"
#include "platform/error.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace editing {
namespace {

constexpr const char* kPreparing = "Preparing the device";
constexpr const char* kUnknown = "?";

/// The attachment value that means "not on the network"; networks report 0 for an attached device.
constexpr std::int32_t kOffnet = 1;
constexpr std::int32_t kOnline = 4;
constexpr std::pair<std::int32_t, const char*> kStates[] = {{2, "Unconfigured"},      {3, "App'less"},
                                                            {kOnline, "Cnfg Online"}, {6, "Cnfg Offline"},
                                                            {12, "Soft Offline"},     {140, "Cnfg Bypass"}};

DeviceState StateOfCode(std::int32_t code) {
  for (const auto& [known, text] : kStates)
    if (code == known) return {text, code == kOnline};
  return {kUnknown};
}

}  // namespace

void OpenDevice::FindOwner() {
  if (device_ || !object_) return;
  device_ = Outside([this] { return lns::OwningDevice(object_); });
  constexpr const char* kOwnerless = "The LonMark object belongs to no device.";
  if (!device_) throw Failure{kPreparing, kOwnerless, kOwnerless};
}

void OpenDevice::Load() {
  interface_ = Outside([this] { return device_.Interface(); });
  model::PointList points =
      Outside([this] { return model::PointList(interface_.NetworkVariables(), context_.dialect); });
  bindings_.clear();
  points_ = std::move(points);
  bindings_ = model::MakeBindings(points_, context_.screen);
  state_ = {};
  context_.show_device();
  for (model::CNvCtrlTable& binding : bindings_) binding.Initialize();
  ReadDevice();
  ShowValues();
}

/// If the test or the state fails, leaves "?". Failures of the first two calls throw.
void OpenDevice::FindState() {
  DeviceState found{kUnknown};
  std::optional<std::int32_t> attachment;  // members of newer object servers only
  lns::SkipIfUnknown([&] { attachment = Outside([this] { return device_.AttachmentStatus(); }); });
  if (attachment == kOffnet) {
    found.text = "Offnet";
  } else if (!Outside([this] { return device_.HasBeenCommissioned(); })) {
    found.text = "Not Commissioned yet";
  } else {
    const auto ask = [this](const char* status, auto question) {
      Outside([&] { context_.progress.DisplayStatus(status); });
      Outside([&] { platform::IgnoreFailure(question); });
    };
    bool good = false;
    ask("Testing the device...", [&] { good = device_.Test() == lns::members::kTestGood; });
    if (good) ask("Reading the device state...", [&] { found = StateOfCode(device_.State()); });
  }
  state_ = found;
  context_.show_device();
}

void OpenDevice::ReadDevice() {
  if (points_.empty()) return;
  try {
    if (state_.text.empty() || state_.text == kUnknown) FindState();
  } catch (const platform::Error& error) {
    throw FailureOf(kPreparing, error);
  }
  ReadAllPoints();
}

void OpenDevice::ReadAllPoints() {
  const ui::BusyPointer busy(context_.desktop);
  const auto log_findings = [this] {
    // No row for an object server without differences.
    if (const std::string findings = context_.dialect->TakeFindings(); !findings.empty())
      LogCommand("Object server", findings);
  };
  try {
    for (std::size_t i = 0; i < points_.size(); ++i) ReadPoint(points_[i], points_.size() - 1 - i);
  } catch (const Failure&) {
    log_findings();
    throw;
  }
  log_findings();
}

void OpenDevice::ReadPoint(model::CNvCpTable& point, std::size_t left) {
  SayDoing("Reading " + point.Name, left);
  try {
    point.GetNetworkValue(context_.DisplayUnits, [this] { return IsCurrent(); });
  } catch (const platform::Error& error) {
    Failure failure = FailureOf("Error reading " + point.Name, error);
    // Logged at once, as the next check may end the pass silently.
    LogFailure(failure);
    EndUnlessItStands();
    failure.is_logged = true;
    throw failure;
  }
  LogCommand("Reading " + point.Name, point.NvAsString());
  EndUnlessItStands();
}

std::vector<std::string> OpenDevice::ReadApart(const model::PointRow& row) {
  model::CNvCpTable& point = points_.Item(row.key);
  SayDoing("Reading " + point.Name);
  try {
    auto fields = point.ReadApart(0, [this] { return IsCurrent(); });
    LogCommand("Reading " + point.Name, text::Join(fields, point.Separator));
    EndUnlessItStands();
    return fields;
  } catch (const platform::Error& error) {
    Failure failure = FailureOf("Error reading " + point.Name, error);
    LogFailure(failure);
    EndUnlessItStands();
    if (!context_.object_server_is_lost()) throw;
    failure.is_logged = true;
    throw failure;
  }
}

void OpenDevice::ShowValues() {
  if (bindings_.empty()) return;
  if (!std::exchange(screen_is_set_up_, true))
    context_.set_up_screen(text::LeadingWholeNumber(points_.Item("nciSccModelRaw").NvAsString()));
  if (const auto failure = ShowAllValues()) throw *failure;
}

/// A value that cannot be shown does not stop the others. Returns the first such failure.
std::optional<OpenDevice::Failure> OpenDevice::ShowAllValues() {
  std::optional<Failure> failure;
  for (const model::CNvCtrlTable& binding : bindings_) {
    ui::Control* const control = binding.TheControl;
    if (!control || !binding.NvCpTable->IsReadIn(context_.DisplayUnits)) continue;
    try {
      const std::string value = binding.Value();
      if (!PendingEdits::IsMarked(*control)) control->SetText(value);
      // The field may already have the focus.
      context_.pending.KeepRead(*control, value);
    } catch (const platform::Error& error) {
      if (!failure) failure = FailureOf("Showing the values", error);
    }
  }
  return failure;
}

void OpenDevice::Refresh() {
  auto held = points_.Held();
  try {
    ReadDevice();
  } catch (...) {  // also if the user stops it or the network closes
    points_.PutBack(std::move(held));
    throw;
  }
  ShowValues();
}

void OpenDevice::Stoppable(const std::function<void()>& reading) {
  stop_ = Stop::Offered;
  try {
    reading();
  } catch (const Stopped&) {
    LogCommand("Refreshing", "Stopped by the user. The screen shows the previous values.");
  }
}

bool OpenDevice::StopRefresh() {
  if (stop_ == Stop::NotOffered) return false;
  stop_ = Stop::Wanted;
  return true;
}

void OpenDevice::SwitchUnits(std::int16_t units) {
  if (context_.pending.Raised() &&
      Ask({"This action will discard all changes\r\n\r\nProceed and lose all changes ?", "Warning",
           ui::Icon::Exclamation, ui::Buttons::OkCancel, /*second_is_default=*/true}) != ui::Answer::Ok)
    return;
  Cancel();
  const bool was_complete = IsComplete();
  const std::int16_t former = std::exchange(context_.DisplayUnits, units);
  BlankTemperatures(was_complete);
  context_.show_units();
  try {
    ReadDevice();
  } catch (const Failure&) {
    GoBackTo(former, was_complete);
    throw;
  }
  ShowValues();
}

/// No number may appear beside the caption of other units, or be typed there.
void OpenDevice::BlankTemperatures(bool others_editable) {
  LetEdit(false, others_editable);
  for (ui::TextField* const field : context_.screen.TemperatureFields()) {
    field->SetText("");
    context_.pending.Unmark(*field);
    context_.pending.Keep(*field);
  }
}

/// No text may be shown, clamped or written in other units than those in which it was read.
void OpenDevice::GoBackTo(std::int16_t units, bool read_them) {
  context_.DisplayUnits = units;
  context_.show_units();
  if (!read_them) return;
  try {
    for (std::size_t i = 0; i < points_.size(); ++i)
      if (!points_[i].IsReadIn(units)) ReadPoint(points_[i], points_.size() - 1 - i);
  } catch (const Failure&) {
    // It is in the log; the user sees the first failure.
  }
  ShowAllValues();
}

}  // namespace editing
