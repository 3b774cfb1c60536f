#include "rollout/run.h"

#include <algorithm>
#include <deque>
#include <utility>

#include "lns/members.h"
#include "model/point_list.h"
#include "platform/error.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace rollout {
namespace {

/// One variable of a device and its goal.
class Variable {
 public:
  explicit Variable(const Goal& goal) : goal_(goal) {}
  std::string name() const { return std::string(goal_.row().variable); }

  /// Throws the platform's error.
  void Read(const lns::Collection<lns::NetworkVariable>& variables,
            const std::shared_ptr<lns::Dialect>& dialect) {
    point_ = model::MakePoint(goal_.row(), variables.Item(name()), dialect);
    point_->GetNetworkValue(goal_.units());
    if (!goal_.format().empty() && goal_.format() != point_->FormatRead())
      throw platform::Error(0, "Run",
                            "its format is " + point_->FormatRead() + " now, not " + goal_.format());
  }
  std::string Change() const { return goal_.ChangeIn(point_->NvAsArray); }
  bool IsReached() const { return goal_.IsReached(point_->NvAsArray); }
  bool IsReached(const std::vector<std::string>& fields) const { return goal_.IsReached(fields); }

  Write MakeWrite(const DeviceWork& work) {
    Write write{work.path, work.neuron_id, name(), point_->FormatRead(), point_->NvAsString(), {}};
    before_ = point_->NvAsArray;
    point_->NvAsArray = goal_.Wanted(before_);
    write.after = point_->NvAsString();
    return write;
  }
  void Send() { point_->SendNetworkValue(); }
  std::vector<std::string> ReadBack() const { return point_->ReadBack(); }
  std::string TextOf(const std::vector<std::string>& fields) const {
    return text::Join(fields, point_->Separator);
  }
  bool IsAsBefore(const std::vector<std::string>& fields) const { return fields == before_; }

 private:
  const Goal& goal_;
  std::unique_ptr<model::CNvCpTable> point_;
  std::vector<std::string> before_;
};

/// The work on one device. It may be tried again; variables that were written stay known.
class DeviceRun {
 public:
  DeviceRun(const DeviceWork& work, Record& record, const Site& site)
      : work_(work), record_(record), site_(site) {}

  const DeviceWork& work() const { return work_; }

  /// Throws what recording throws. Not tried, or partial, if the run is stopped.
  Result Try() {
    is_worth_another_try_ = false;
    if (!work_.problem.empty()) return {State::LeftAlone, work_.problem};
    if (work_.goals.empty()) return {State::Same, {}};
    std::vector<Variable> variables;
    try {
      variables = ReadAll();
    } catch (const platform::Error& error) {
      return Unsettled(may_have_written_  ? State::Unknown
                       : written_.empty() ? State::Unreachable
                                          : State::Partial,
                       settings::ReasonOf(error));
    }
    for (const Variable& variable : variables)
      if (const std::string changed = variable.Change(); !changed.empty())
        return {written_.empty() ? State::ChangedMeanwhile : State::Partial, changed + WrittenText()};
    for (Variable& variable : variables) {
      if (variable.IsReached()) continue;
      if (site_.is_stopped())
        return {written_.empty() ? State::NotTried : State::Partial, "stopped" + WrittenText()};
      if (auto result = WriteAndVerify(variable)) return *result;
      written_.push_back(variable.name());
    }
    return {written_.empty() && !may_have_written_ ? State::Same : State::Verified, {}};
  }
  /// The last try failed in a way that may pass.
  bool IsWorthAnotherTry() const { return is_worth_another_try_; }

 private:
  std::string WrittenText() const {
    std::string text;
    for (const std::string& name : written_) text += (text.empty() ? "; written: " : ", ") + name;
    return text;
  }

  Result Unsettled(State state, const std::string& reason) {
    is_worth_another_try_ = true;
    return {state, reason + WrittenText()};
  }

  std::vector<Variable> ReadAll() {
    const lns::AppDevice device = site_.find(work_.path);
    if (const std::string id = device.NeuronId(); id != work_.neuron_id)
      throw platform::Error(0, "Run", "the device is another one: its Neuron ID is " + id);
    const auto all = device.Interface().NetworkVariables();
    std::vector<Variable> variables;
    for (const auto& goal : work_.goals) {
      Variable variable(*goal);
      variable.Read(all, site_.dialect);
      variables.push_back(std::move(variable));
    }
    return variables;
  }

  /// Nothing if the device holds what was sent.
  std::optional<Result> WriteAndVerify(Variable& variable) {
    const Write write = variable.MakeWrite(work_);
    record_.Begin(write);
    std::optional<platform::Error> refusal;
    try {
      variable.Send();
    } catch (const platform::Error& error) {
      refusal = error;
    }
    const auto end = [&](State state, const std::string& reason, bool is_worth_another_try) {
      record_.End(write, std::string(NameOf(state)), reason);
      is_worth_another_try_ = is_worth_another_try;
      const bool is_partial = !written_.empty() && state != State::Unknown;
      return Result{is_partial ? State::Partial : state, write.variable + ": " + reason + WrittenText()};
    };
    std::vector<std::string> fields;
    try {
      fields = variable.ReadBack();
    } catch (const platform::Error& error) {
      may_have_written_ = true;
      return end(State::Unknown, settings::ReasonOf(refusal ? *refusal : error), true);
    }
    if (variable.IsReached(fields)) {
      record_.End(write, std::string(NameOf(State::Verified)), {});
      return std::nullopt;
    }
    if (refusal && variable.IsAsBefore(fields))
      return end(State::Refused, settings::ReasonOf(*refusal), true);
    may_have_written_ = true;
    return end(State::Refused, "the device holds " + variable.TextOf(fields) + " instead of " + write.after,
               false);
  }

  const DeviceWork& work_;
  Record& record_;
  const Site& site_;
  std::vector<std::string> written_;
  /// An earlier try sent a value whose arrival is not known.
  bool may_have_written_ = false;
  bool is_worth_another_try_ = false;
};

}  // namespace

std::string_view NameOf(State state) {
  switch (state) {
    case State::Same:
      return "same";
    case State::Verified:
      return "verified";
    case State::Refused:
      return "refused";
    case State::ChangedMeanwhile:
      return "changed meanwhile";
    case State::Partial:
      return "partial";
    case State::Unreachable:
      return "unreachable";
    case State::Unknown:
      return "unknown";
    case State::LeftAlone:
      return "left alone";
    case State::NotTried:
      return "not tried";
  }
  return {};
}

bool IsDone(State state) { return state == State::Same || state == State::Verified; }

void Run::Go(const std::function<void(const DeviceWork& device, const Result& result)>& show) {
  const auto settle = [&](const DeviceWork& device, const Result& result) {
    if (result.state == State::NotTried) return;
    record_.EndDevice(device.path, std::string(NameOf(result.state)), result.reason);
    show(device, result);
  };
  const auto ends = [&] { return site_.is_stopped() || site_.is_lost(); };
  std::deque<std::pair<DeviceRun, Result>> again;
  for (const DeviceWork& device : work_) {
    if (ends()) break;
    DeviceRun run(device, record_, site_);
    Result result = run.Try();
    if (run.IsWorthAnotherTry())
      again.emplace_back(std::move(run), std::move(result));
    else
      settle(device, result);
  }
  for (; !again.empty(); again.pop_front()) {
    auto& [run, result] = again.front();
    if (!ends()) {
      Result second = run.Try();
      if (second.state != State::NotTried) result = std::move(second);
    }
    settle(run.work(), result);
  }
}

}  // namespace rollout
