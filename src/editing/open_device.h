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

/// What the main window lends to the device it shows. The window owns all of it and outlives the devices.
struct Context {
  ui::Desktop& desktop;
  activity::fLog& log;
  ui::Progress& progress;
  const std::string& plug_in_name;
  model::ConfigurationScreen& screen;
  PendingEdits& pending;
  /// The dialect of the object server in use.
  const std::shared_ptr<lns::Dialect>& dialect;
  /// The units in force: 0 SI (Celsius), 1 US (Fahrenheit).
  std::int16_t& DisplayUnits;
  ui::Button& refresh_button;
  /// Updates what the window shows of the units in force, and of the device.
  std::function<void()> show_units;
  std::function<void()> show_device;
  std::function<bool()> is_visible;
  /// Prepares the screen for the model number of a device that was read.
  std::function<void(int)> set_up_screen;
  std::function<bool()> object_server_is_lost;
  /// Reads the device on the screen again if it has been read.
  std::function<void()> read_again;
  /// The device was on the screen and is not any more, or cannot be used any more.
  std::function<void()> device_left;

  /// Counts the devices. Their numbers show which device the log's last row is about.
  int devices = 0;
};

/// The status bar's text for a device, and whether the device counts as online.
struct DeviceState {
  std::string text;
  bool online = false;
};

/// The device of one configure command: its objects on the network, its points and bindings, and the passes
/// that read, show, write and cancel them.
///
/// The message loop runs within every call that leaves the process, so other commands, the user or the end of
/// the network can interrupt it. After each such call the device checks whether it is still the current one
/// (Outside). If not, the pass ends; its changes to the device have been logged and reported.
class OpenDevice : public std::enable_shared_from_this<OpenDevice> {
 public:
  /// Without a device and without a LonMark object there is no device.
  OpenDevice(Context& context, std::string path, lns::AppDevice device, lns::LonMarkObject object)
      : context_(context),
        number_(++context.devices),
        path_(std::move(path)),
        device_(std::move(device)),
        object_(std::move(object)) {}

  /// Empties the screen for this device, which has not been read yet.
  void TakeScreen();
  /// Another device takes over the screen.
  void Supersede();
  /// The network closes. Texts stay on the screen; the device can no longer be read or written.
  void Close();
  /// There is no device.
  bool IsNone() const { return standing_ == Standing::Current && !device_ && !object_; }
  /// It is the device on the screen and can be used.
  bool IsCurrent() const { return standing_ == Standing::Current; }
  /// Informs the user if there is no device or if it was closed. False otherwise.
  bool SaysItIsGone() const;

  const lns::AppDevice& device() const { return device_; }
  const lns::LonMarkObject& object() const { return object_; }
  const lns::Interface& interface() const { return interface_; }
  const model::BindingList& bindings() const { return bindings_; }
  const DeviceState& state() const { return state_; }
  /// The value being read or written, and how many are left; empty if none.
  const std::string& doing() const { return doing_; }
  /// Empty until the variables of the device have been found.
  std::string path() const { return points_.empty() ? "" : path_; }
  /// Every point was read in the units in force. Nothing may be applied before.
  bool IsComplete() const { return points_.IsReadIn(context_.DisplayUnits); }

  /// Runs a step that asks the user or the network; it ends if the device is no longer the current one.
  template <class Step>
  void WhileItStands(Step&& step) {
    const std::shared_ptr<OpenDevice> keep = shared_from_this();
    try {
      step();
    } catch (const Ended&) {
      // The event that ended the step has put everything in order.
    }
  }
  /// Runs a step with its progress, and logs and reports its failure. Reads log their own failures, writes
  /// also report them. `action` names a failure that does not name its own action.
  void Pass(const std::string& action, const std::function<void()>& step);

  // Called only within a step or a pass:

  /// Makes a call that leaves the process. Ends the step if the device is no longer the current one.
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

  /// Finds the device that owns the LonMark object.
  void FindOwner();
  /// Builds points and bindings, determines the state, and reads and shows everything for the first time.
  void Load();
  /// Reads everything again and shows it, except in marked fields. A failed or stopped refresh changes
  /// nothing.
  void Refresh();
  /// Runs a read that the user may stop.
  void Stoppable(const std::function<void()>& reading);
  /// Stops a running refresh at its next step. False if none runs.
  bool StopRefresh();
  /// Reads and shows everything in other units; asks first if edits are pending. If a read fails, restores
  /// the previous units; nothing can be applied until all points have been read in them again.
  void SwitchUnits(std::int16_t units);
  /// Collects the marked fields into their points, clamps numbers to the limits of the units in force, writes
  /// the changed points, and unmarks the written fields.
  ///
  /// An entry out of range is not refused: it is set to the limit, and a message says so. A text that is not
  /// a number is skipped. A failed write ends the pass; its fields and those of later points stay marked, and
  /// applying again writes them. A field edited during the writes also stays marked.
  void Apply();
  /// Writes the changed points in list order and logs each write. A failed write ends it, is logged and
  /// shown, and returns false.
  bool PropagateChanges();
  /// Discards pending edits: the points and the marked fields return to the values last known from the
  /// device. Reads nothing.
  void Cancel();
  /// Cancels the edit of one field.
  void PutBack(const ui::Control& field);
  /// "changed, was 21": the value last known from the device, as the field shows it. Only "changed" if that
  /// is not known in the units in force; empty for an unmarked field.
  std::string ChangeOf(const ui::Control& field) const;

  /// Reads one variable in SI and logs it. The point keeps its fields and its format; if the format cannot be
  /// restored, it counts as not read. Throws the platform's error; without an object server ends the pass.
  std::vector<std::string> ReadApart(const model::PointRow& row);
  /// Nothing is being read or written until the next step of the pass: the user decides.
  void SayIdle();

  /// Logs an operation, or a failure in the form that activity::fLog takes. A row that names the device
  /// precedes its rows.
  void LogCommand(const std::string& action, const std::string& results);
  void LogError(const std::string& message);

 private:
  enum class Standing { Current, Superseded, Closed };
  struct Ended {};
  struct Stopped {};
  /// A failed step: action and result for the log, a text for the user.
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
  void SayDoing(const std::string& doing);
  void SayDoing(const std::string& action, std::size_t left) {
    SayDoing(action + ", " + std::to_string(left) + " left");
  }
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
  /// The marked fields and the texts that the running apply has collected from them.
  std::vector<std::pair<ui::Control*, std::string>> collected_;
};

}  // namespace editing
