#include "editing/open_device.h"

#include "platform/error.h"

namespace editing {

void OpenDevice::TakeScreen() {
  LetEdit(false, false);
  context_.screen.ShowInitialTexts();
  context_.pending.Drop();
  context_.show_device();
}

void OpenDevice::Supersede() {
  standing_ = Standing::Superseded;
  context_.device_left();
}

void OpenDevice::Close() {
  if (standing_ != Standing::Current || (!device_ && !object_)) return;
  standing_ = Standing::Closed;
  state_ = {"Closed"};
  LetEdit(false, false);
  context_.show_device();
  context_.device_left();
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

void OpenDevice::SayIdle() {
  doing_.clear();
  context_.show_device();
}

/// Errors of points begin with a line that names the point and the action; other errors do not.
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

void OpenDevice::SayDoing(const std::string& doing) {
  doing_ = doing;
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

}  // namespace editing
