#include "rollout/record.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "settings/file_names.h"
#include "text/quoted.h"
#include "text/strings.h"

namespace rollout {
namespace {

constexpr std::string_view kRecordFirstLine = "QM5R record 1.0";
constexpr std::string_view kHead = "head", kPlan = "plan", kWrite = "write", kOutcome = "outcome",
                           kDevice = "device";

/// The CRC-32 of ISO 3309, as eight hexadecimal digits.
std::string ChecksumOf(std::string_view bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const char byte : bytes) {
    crc ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320u : 0);
  }
  crc = ~crc;
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) text += text::HexByte(static_cast<char>(crc >> shift & 0xFF));
  return text;
}

std::string LineOf(std::string_view kind, const std::string& time, const std::vector<std::string>& cells) {
  std::string line = std::string(kind) + '\t' + text::Quoted(time);
  for (const std::string& cell : cells) line += '\t' + text::Quoted(cell);
  return line + '\t' + ChecksumOf(line) + "\r\n";
}

/// The cells without the checksum; nothing if it does not fit.
std::vector<std::string> CellsOf(std::string_view line) {
  const std::size_t last = line.rfind('\t');
  if (last == std::string_view::npos || ChecksumOf(line.substr(0, last)) != line.substr(last + 1)) return {};
  std::vector<std::string> cells;
  for (const std::string& cell : text::Split(line.substr(0, last), "\t")) {
    auto text = text::Unquoted(cell);
    if (!text) return {};
    cells.push_back(std::move(*text));
  }
  return cells;
}

/// "2026-11-23T10-15-00Z Demo Tower.qm5rrecord", distinct from the files that are there.
std::string NewPath(const platform::Files& files, const std::string& folder, const Head& head) {
  std::string time = head.time;
  std::ranges::replace(time, ':', '-');
  const std::string name = folder + files.Separator() + settings::FileNameOf(time + ' ' + head.network);
  std::string path = name + std::string(kRecordExtension);
  for (int number = 2; files.FileExists(path); ++number)
    path = name + ' ' + std::to_string(number) + std::string(kRecordExtension);
  return path;
}

class RecordReader {
 public:
  RecordFile Read(std::string_view text) {
    while (!text.empty()) {
      ++line_;
      const std::size_t end = text.find('\n');
      const bool is_last = end == std::string_view::npos || end + 1 == text.size();
      std::string_view line = text.substr(0, end);
      text.remove_prefix(std::min(line.size() + 1, text.size()));
      const bool is_whole = end != std::string_view::npos && line.ends_with('\r');
      if (is_whole) line.remove_suffix(1);
      if (line_ == 1 && (line != kRecordFirstLine || !is_whole)) {
        Fail("this is no record: its first line is not \"" + std::string(kRecordFirstLine) + '"');
        break;
      }
      if (line_ == 1) continue;
      const std::vector<std::string> cells = is_whole ? CellsOf(line) : std::vector<std::string>();
      if (!cells.empty())
        Take(cells);
      else if (is_last)
        file_.is_torn = true;
      else
        Fail("the checksum does not fit");
    }
    if (line_ == 0) Fail("the record is empty");
    const PlanFile plan = ParsePlan(plan_);
    file_.plan = plan.plan;
    if (!plan_.empty())
      for (const settings::Finding& finding : plan.findings) Fail("in the plan: " + finding.text);
    return std::move(file_);
  }

 private:
  void Fail(std::string text) { file_.findings.push_back({line_, true, std::move(text), nullptr}); }

  void Take(const std::vector<std::string>& cells) {
    const std::string& kind = cells[0];
    const auto has = [&](std::string_view name, std::size_t count) {
      return kind == name && cells.size() == count + 2;
    };
    if (has(kHead, 3)) {
      file_.head = {cells[1], cells[2], cells[3], cells[4]};
    } else if (has(kPlan, 1)) {
      plan_ += cells[2] + '\n';
    } else if (has(kWrite, 6)) {
      const Write write{cells[2], cells[3], cells[4], cells[5], cells[6], cells[7]};
      file_.events.push_back({Event::Kind::Write, cells[1], write, {}, {}});
    } else if (has(kOutcome, 4)) {
      const Write write{cells[2], {}, cells[3], {}, {}, {}};
      file_.events.push_back({Event::Kind::Outcome, cells[1], write, cells[4], cells[5]});
    } else if (has(kDevice, 3)) {
      file_.events.push_back(
          {Event::Kind::Device, cells[1], {cells[2], {}, {}, {}, {}, {}}, cells[3], cells[4]});
    } else {
      Fail("there is no entry \"" + kind + "\" with " + std::to_string(cells.size()) + " cells");
    }
  }

  RecordFile file_;
  std::string plan_;
  std::size_t line_ = 0;
};

}  // namespace

Record::Record(platform::Files& files, const std::string& folder, const Head& head, const Plan& plan,
               std::function<std::string()> time)
    : time_(std::move(time)), path_(NewPath(files, folder, head)), file_(files.CreateGrowing(path_)) {
  std::string text = std::string(kRecordFirstLine) + "\r\n";
  text += LineOf(kHead, head.time, {head.user, head.network, head.action});
  for (const std::string& line : text::Split(PlanText(plan), "\r\n"))
    text += LineOf(kPlan, head.time, {line});
  file_->Append(text);
}

void Record::Append(std::string_view kind, const std::vector<std::string>& cells) {
  file_->Append(LineOf(kind, time_(), cells));
}

void Record::Begin(const Write& write) {
  Append(kWrite, {write.path, write.neuron_id, write.variable, write.format, write.before, write.after});
}

void Record::End(const Write& write, const std::string& outcome, const std::string& reason) {
  Append(kOutcome, {write.path, write.variable, outcome, reason});
}

void Record::EndDevice(const std::string& path, const std::string& state, const std::string& reason) {
  Append(kDevice, {path, state, reason});
}

RecordFile ParseRecord(std::string_view text) { return RecordReader().Read(text); }

}  // namespace rollout
