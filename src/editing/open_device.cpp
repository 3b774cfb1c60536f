#include "editing/open_device.h"

#include "lns/members.h"
#include "platform/error.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace editing {
namespace {

constexpr const char* kPreparing = "Preparing the device";
constexpr const char* kClosed = "Closed";
constexpr const char* kUnknown = "?";

/// The program's reading of the attachment value; networks report 0 for an attached device.
constexpr std::int32_t kOffnet = 1;

DeviceState StateOfCode(std::int32_t code) {
  switch (code) {
    case 2:
      return {"Unconfigured"};
    case 3:
      return {"App'less"};
    case 4:
      return {"Cnfg Online", true};
    case 6:
      return {"Cnfg Offline"};
    case 12:
      return {"Soft Offline"};
    case 140:
      return {"Cnfg Bypass"};
    default:
      return {kUnknown};
  }
}

}  // namespace

void OpenDevice::TakeScreen() {
  LetEdit(false, false);
  context_.screen.ShowInitialTexts();
  context_.pending.Drop();
  context_.show_device();
}

void OpenDevice::Close() {
  if (standing_ != Standing::Current || (!device_ && !object_)) return;
  standing_ = Standing::Closed;
  state_ = {kClosed};
  LetEdit(false, false);
  context_.show_device();
}

bool OpenDevice::SaysItIsGone() const {
  const bool closed = standing_ == Standing::Closed;
  if (!closed && (device_ || object_)) return false;
  context_.desktop.ShowMessage(
      {std::string(closed ? "The network of this device has been closed." : "No device is open.") +
           "\r\n\r\nChoose Configure in the network tool.",
       context_.plug_in_name, ui::Icon::Exclamation});
  return true;
}

void OpenDevice::Pass(const std::string& action, const std::function<void()>& step) {
  WhileItStands([&] {
    std::optional<Failure> failure;
    try {
      step();
    } catch (const Failure& failed) {
      failure = failed;
    } catch (const platform::Error& error) {
      failure = FailureOf(action, error);
    }
    EndUnlessItStands();
    FinishPass();
    LetEdit(IsComplete(), IsComplete());
    if (!failure) return;
    Report(*failure);
    EndUnlessItStands();
    if (!IsComplete()) context_.refresh_button.SetFocus();
  });
  FinishPass();
}

void OpenDevice::FinishPass() {
  stop_ = Stop::NotOffered;
  doing_.clear();
  context_.progress.Close();
  context_.show_device();
}

/// Points tell which of them failed, and doing what, in front of the platform's own words; nobody else does.
OpenDevice::Failure OpenDevice::FailureOf(const std::string& action, const platform::Error& error) {
  const std::string text =
      error.description().empty() ? "Error " + std::to_string(error.number()) : error.description();
  const bool names_action = error.source() == "GetNetworkValue" || error.source() == "SendNetworkValue";
  const std::size_t line_break = text.find("\r\n");
  if (names_action && line_break != std::string::npos)
    return {text.substr(0, line_break), text.substr(line_break + 2), text};
  return {action, error.cause().empty() ? text : text + ": " + error.cause(), text};
}

void OpenDevice::Report(const Failure& failure) {
  if (!failure.is_logged) LogFailure(failure);
  context_.desktop.ShowMessage({failure.text, context_.plug_in_name, ui::Icon::Critical});
  if (context_.object_server_is_lost()) Close();
}

void OpenDevice::NameItInTheLog() {
  if (context_.log.subject != number_) context_.log.LogCommand("Configuring", path_);
}

void OpenDevice::LogCommand(const std::string& action, const std::string& results) {
  NameItInTheLog();
  context_.log.LogCommand(action, results);
  context_.log.subject = number_;
}

void OpenDevice::LogError(const std::string& message) {
  NameItInTheLog();
  context_.log.LogError(message);
  context_.log.subject = number_;
}

void OpenDevice::LogFailure(const Failure& failure) {
  LogError(activity::ErrorMessage(failure.action, failure.result));
}

void OpenDevice::SayDoing(const std::string& action, std::size_t left) {
  doing_ = action + ", " + std::to_string(left) + " left";
  context_.show_device();
  Outside([this] {
    if (context_.progress.Shown() || !context_.is_visible()) return context_.progress.DisplayStatus(doing_);
    context_.desktop.Yield();
  });
  if (stop_ == Stop::Wanted) throw Stopped{};
}

void OpenDevice::LetEdit(bool temperatures, bool others) {
  for (ui::Field* const field : context_.screen.EditableFields()) field->SetLocked(!others);
  for (ui::Field* const field : context_.screen.TemperatureFields()) field->SetLocked(!temperatures);
}

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
  InitializeAllBindings();
  ReadDevice();
  ShowValues();
}

/// A test or a state that fails leaves "?"; errors of the first two questions reach the pass.
void OpenDevice::FindState() {
  DeviceState found{kUnknown};
  std::optional<std::int32_t> attachment;  // object servers of older releases do not know it
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
    // An object server that needs nothing special leaves no row.
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
    point.GetNetworkValue(context_.DisplayUnits, [this] { return standing_ == Standing::Current; });
  } catch (const platform::Error& error) {
    Failure failure = FailureOf("Error reading " + point.Name, error);
    // At once: what follows may end the pass without a word.
    LogFailure(failure);
    EndUnlessItStands();
    failure.is_logged = true;
    throw failure;
  }
  LogCommand("Reading " + point.Name, point.NvAsString());
  EndUnlessItStands();
}

void OpenDevice::InitializeAllBindings() {
  for (model::CNvCtrlTable& binding : bindings_) binding.Initialize();
}

void OpenDevice::ShowValues() {
  if (bindings_.empty()) return;
  if (!std::exchange(screen_is_set_up_, true))
    context_.set_up_screen(text::LeadingWholeNumber(points_.Item("nciSccModelRaw").NvAsString()));
  if (const auto failure = ShowAllValues()) throw *failure;
}

/// A value that cannot be shown keeps no other from its field; the first such failure is the result.
std::optional<OpenDevice::Failure> OpenDevice::ShowAllValues() {
  std::optional<Failure> failure;
  for (const model::CNvCtrlTable& binding : bindings_) {
    ui::Control* const control = binding.TheControl;
    if (!control || !binding.NvCpTable->IsReadIn(context_.DisplayUnits)) continue;
    try {
      const std::string value = binding.Value();
      if (!PendingEdits::IsMarked(*control)) control->SetText(value);
      // The field may have the focus already.
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
  } catch (...) {  // also if the user stops it or the network goes meanwhile
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
    LogCommand("Refreshing", "Stopped by the user. The values shown are the former ones.");
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

/// No number is shown or typed beside the caption of other units.
void OpenDevice::BlankTemperatures(bool others_editable) {
  LetEdit(false, others_editable);
  for (ui::TextField* const field : context_.screen.TemperatureFields()) {
    field->SetText("");
    context_.pending.Unmark(*field);
    context_.pending.Keep(*field);
  }
}

/// No text may be shown, clamped or written in other units than it was read in.
void OpenDevice::GoBackTo(std::int16_t units, bool read_them) {
  context_.DisplayUnits = units;
  context_.show_units();
  if (!read_them) return;
  try {
    for (std::size_t i = 0; i < points_.size(); ++i)
      if (!points_[i].IsReadIn(units)) ReadPoint(points_[i], points_.size() - 1 - i);
  } catch (const Failure&) {
    // The log has it; the user is shown the failure that led here.
  }
  ShowAllValues();
}

}  // namespace editing
