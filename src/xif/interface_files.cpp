#include "xif/interface_files.h"

#include <algorithm>
#include <memory>

#include "platform/attempt.h"
#include "text/strings.h"
#include "xif/hidden_form.h"
#include "xif/search.h"

namespace xif {
namespace {

constexpr const char* kWorkingTitle = "XIF32BIN";
constexpr const char* kFinishedTitle = "Finished - XIF32BIN";

// Rounds of about 10 ms, in which the message loop runs.
constexpr int kRoundMilliseconds = 10;
constexpr int kMostWorkingRounds = 6000;  // with the tool's window up
constexpr int kMostIdleRounds = 1000;     // with no window of it
constexpr int kMostFileRounds = 1000;     // after it

std::string Quoted(const std::string& path) { return '"' + path + '"'; }

}  // namespace

std::string InterfaceFiles::FindXifForProgramId(const std::string& program_id) {
  // An empty folder would be the root of the drive.
  if (folder.empty()) return {};
  std::string wanted = program_id;
  std::string path = FindXifFile(files_, folder + '\\', wanted);
  return path.empty() ? path : ExportXfb(path);
}

std::string InterfaceFiles::LocateXifByDialog(const std::string& program_id) {
  fHidden hidden(desktop_);
  hidden.DlgXIF.title = "Locate the XIF file with Program ID " + program_id;
  hidden.DlgXIF.filter = "External Interface Files (*.XIF)|*.XIF";
  hidden.DlgXIF.folder = folder;
  std::string path = hidden.AskXif().value_or("");
  hidden.Unload();
  if (path.empty()) return {};
  // The root of a drive is no folder to search from then on.
  if (const std::string chosen = text::FolderOf(path); chosen.find('\\') != std::string::npos)
    folder = chosen;
  return ExportXfb(path);
}

std::string InterfaceFiles::ExportXfb(std::string& xif_path) {
  std::string needed = xif_path;
  if (files_.FileExists(xif_path)) {
    needed = xif_path.substr(0, xif_path.size() - std::min<std::size_t>(3, xif_path.size())) + "XFB";
    if (!files_.FileExists(needed)) RunConverter(xif_path, needed);
  }
  if (!files_.FileExists(needed)) {
    xif_path.clear();
    desktop_.ShowMessage(
        {"The file " + needed + " could not be found.", "Cannot Export Database", ui::Icon::Critical});
  }
  return xif_path;
}

void InterfaceFiles::RunConverter(const std::string& xif_path, const std::string& xfb_path) {
  const std::string lonworks = registry::LonWorksFolder(registry_);
  if (lonworks.empty()) return;
  std::unique_ptr<platform::StartedProgram> converter;
  const bool started = platform::Attempt([&] {
    converter = shell_.Start(lonworks + "\\bin\\XIF32BIN", Quoted(xif_path) + ' ' + Quoted(xfb_path),
                             platform::Shell::Show::MinimizedWithFocus);
  });
  if (!started) return;
  AwaitConverter(*converter);
  shell_.CloseWindow(kFinishedTitle);
  for (int round = 0; round < kMostFileRounds && !files_.FileExists(xfb_path); ++round) PassRound();
}

/// Returns when the tool says that it has finished, when it has ended, or when that takes too long. Its
/// window may take a moment to come up.
void InterfaceFiles::AwaitConverter(const platform::StartedProgram& converter) {
  for (int round = 0; converter.Running() && !shell_.WindowExists(kFinishedTitle); ++round) {
    if (round >= (shell_.WindowExists(kWorkingTitle) ? kMostWorkingRounds : kMostIdleRounds)) return;
    PassRound();
  }
}

void InterfaceFiles::PassRound() {
  desktop_.Yield();
  shell_.Pause(kRoundMilliseconds);
}

}  // namespace xif
