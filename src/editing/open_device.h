#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "editing/pending_edits.h"
#include "log/log.h"
#include "model/control_binding.h"
#include "model/point_list.h"
#include "ui/desktop.h"
#include "ui/progress.h"

namespace editing {

/// What the main window lends to the device that it shows. The window owns all of it; it outlives the
/// devices.
struct Context {
  ui::Desktop& desktop;
  activity::fLog& log;
  ui::Progress& progress;
  const std::string& plug_in_name;
  model::ConfigurationScreen& screen;
  PendingEdits& pending;
  /// That of the object server in use.
  const std::shared_ptr<lns::Dialect>& dialect;
  /// The units in force: 0 SI (Celsius), 1 US (Fahrenheit).
  std::int16_t& DisplayUnits;
  ui::Button& refresh_button;
  /// The window's part of what is shown of the units in force, and of the device.
  std::function<void()> show_units;
  std::function<void()> show_device;
  std::function<bool()> is_visible;
  /// Sets the screen up for the model number of a device that has been read.
  std::function<void(int)> set_up_screen;
  std::function<bool()> object_server_is_lost;
  /// Reads the device on the screen again if it has been read.
  std::function<void()> read_again;

  /// Devices are numbered, so that the log knows whose its last row is.
  int devices = 0;
};

/// What the status bar says of a device, and whether it counts as online.
struct DeviceState {
  std::string text;
  bool online = false;
};

/// The device of one configure command: what it is on the network, its points and bindings, and the passes
/// that read, show, write and cancel them.
///
/// The message loop runs within every call that leaves the process, and with it other commands, the user and
/// the end of the network. After each such call the device checks whether it is still the current one
/// (Outside). If not, the pass ends there; what it has done to the device by then has been logged and
/// reported.
class OpenDevice : public std::enable_shared_from_this<OpenDevice> {
 public:
  /// The device, or the LonMark object whose device it is; without either there is no device.
  OpenDevice(Context& context, std::string path, lns::AppDevice device, lns::LonMarkObject object)
      : context_(context),
        number_(++context.devices),
        path_(std::move(path)),
        device_(std::move(device)),
        object_(std::move(object)) {}

  /// Empties the screen for this device, which has not been read yet.
  void TakeScreen();
  /// Another device takes the screen.
  void Supersede() { standing_ = Standing::Superseded; }
  /// Its network goes. What is typed stays on the screen, and nothing can be done to the device any more.
  void Close();
  /// There is no device.
  bool IsNone() const { return standing_ == Standing::Current && !device_ && !object_; }
  /// Tells the user that there is no device, or that it was closed. False if there is one.
  bool SaysItIsGone() const;

  const lns::AppDevice& device() const { return device_; }
  const lns::LonMarkObject& object() const { return object_; }
  const lns::Interface& interface() const { return interface_; }
  const model::BindingList& bindings() const { return bindings_; }
  const DeviceState& state() const { return state_; }
  /// What is being read or written and how much is left; empty while nothing is.
  const std::string& doing() const { return doing_; }
  /// Empty until its variables have been found.
  std::string path() const { return points_.empty() ? "" : path_; }
  /// Every point holds what was read in the units in force; nothing may be applied before.
  bool IsComplete() const { return points_.IsReadIn(context_.DisplayUnits); }

  /// Runs a step that asks the user or the network, and ends it if the device is no longer the current one.
  template <class Step>
  void WhileItStands(Step&& step) {
    const std::shared_ptr<OpenDevice> keep = shared_from_this();
    try {
      step();
    } catch (const Ended&) {
      // What came in has put everything in order.
    }
  }
  /// Runs a pass: a step with its progress, and the one place that logs and reports its failure, except that
  /// of a write, which WriteAndReport does. `action` names a failure that has no name of its own.
  void Pass(const std::string& action, const std::function<void()>& step);

  // The following are called within a step or a pass.

  /// Makes a call that leaves the process. The step ends here if the device is no longer the current one.
  template <class Call>
  auto Outside(Call&& call) {
    try {
      if constexpr (std::is_void_v<decltype(call())>) {
        call();
        EndUnlessItStands();
      } else {
        auto result = call();
        EndUnlessItStands();
        return result;
      }
    } catch (const platform::Error&) {
      EndUnlessItStands();
      throw;
    }
  }
  ui::Answer Ask(const ui::Message& message) {
    return Outside([&] { return context_.desktop.ShowMessage(message); });
  }
  void SayNotNumerical() { Ask({"Value must be numerical", "Invalid value", ui::Icon::Exclamation}); }

  /// The device that owns the LonMark object. A failure reaches the pass.
  void FindOwner();
  /// Builds points and bindings, finds out the state, and reads and shows everything for the first time.
  void Load();
  /// Reads everything again and shows it, but in no field that holds an edit. One that fails or is stopped
  /// changes nothing.
  void Refresh();
  /// Runs a reading that the user may stop.
  void Stoppable(const std::function<void()>& reading);
  /// Ends a running refresh at its next step. False if none runs.
  bool StopRefresh();
  /// Reads and shows everything in other units; asks first if edits are pending. If reading fails, the former
  /// units come back, and nothing can be applied until all points have been read in them again.
  void SwitchUnits(std::int16_t units);
  /// Sends the pending edits to the device: collects the marked fields into their points, clamping numbers to
  /// the limits of the units in force, writes the points that changed, and unmarks what was written.
  ///
  /// An entry out of range is never refused: it is set to the limit and the user is informed. A text that is
  /// no number is left out. A write that fails ends the pass; its fields and those of later points stay
  /// marked, and applying again writes them. So does a field that was edited while the others were being
  /// written.
  void Apply();
  /// Writes every changed point, in list order, and logs each. False when a write failed, which ends it and
  /// has been logged and shown.
  bool PropagateChanges();
  /// Throws the unapplied edits away: what the device is known to hold goes back into the points and the
  /// marked fields. Nothing is read from the device.
  void Cancel();
  /// The same for one field.
  void PutBack(const ui::Control& field);
  /// "changed, was 21": what a marked field would show of the value that the device is known to hold.
  /// Without the value if that is not known in the units in force; empty for an unmarked field.
  std::string ChangeOf(const ui::Control& field) const;

  /// Log an operation, or a message as activity::fLog takes it; the rows of a device follow a row
  /// that names it.
  void LogCommand(const std::string& action, const std::string& results);
  void LogError(const std::string& message);

 private:
  enum class Standing { Current, Superseded, Closed };
  struct Ended {};
  struct Stopped {};
  /// A step that failed: for the log as action and result, for the user as a text.
  struct Failure {
    std::string action;
    std::string result;
    std::string text;
    bool is_logged = false;
  };
  static Failure FailureOf(const std::string& action, const platform::Error& error);

  void EndUnlessItStands() const {
    if (standing_ != Standing::Current) throw Ended{};
  }
  void LogFailure(const Failure& failure);
  void Report(const Failure& failure);
  void NameItInTheLog();
  void SayDoing(const std::string& action, std::size_t left);
  void FinishPass();
  void LetEdit(bool temperatures, bool others);

  void FindState();
  void ReadDevice();
  void ReadAllPoints();
  void ReadPoint(model::CNvCpTable& point, std::size_t left);
  void ShowValues();
  std::optional<Failure> ShowAllValues();
  void BlankTemperatures(bool others_editable);
  void GoBackTo(std::int16_t units, bool read_them);

  void Collect();
  void Clamp(const model::CNvCtrlTable& binding, const model::Range& range);
  bool WritePoint(model::CNvCpTable& point);
  bool WriteAndReport(model::CNvCpTable& point);
  void UnmarkWritten(const model::CNvCpTable& point);
  void PutBack(const model::CNvCtrlTable& binding);

  Context& context_;
  const int number_;
  const std::string path_;
  lns::AppDevice device_;
  const lns::LonMarkObject object_;
  lns::Interface interface_;
  model::PointList points_;
  model::BindingList bindings_;
  DeviceState state_;
  Standing standing_ = Standing::Current;
  enum class Stop { NotOffered, Offered, Wanted } stop_ = Stop::NotOffered;
  std::string doing_;
  bool screen_is_set_up_ = false;
  /// The marked fields with their texts, as the running apply has collected them.
  std::vector<std::pair<ui::Control*, std::string>> collected_;
};

}  // namespace editing
