#include "xif/interface_files.h"

#include <algorithm>

#include "text/strings.h"
#include "xif/search.h"

namespace xif {
namespace {

constexpr lonworks::Tool kConverter{"XIF32BIN", "XIF32BIN", "Finished - XIF32BIN"};
constexpr int kMostFileRounds = 1000;  // after the converter has ended

}  // namespace

std::string InterfaceFiles::FindXifForProgramId(const std::string& program_id) {
  // An empty folder would mean the root of the drive.
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
  // The root of a drive does not become the folder to search.
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
  using lonworks::Quoted;
  using Outcome = lonworks::Tools::Outcome;
  const Outcome outcome = tools_.Run(kConverter, Quoted(xif_path) + ' ' + Quoted(xfb_path));
  if (outcome == Outcome::NotStarted) return;
  for (int round = 0; round < kMostFileRounds && !files_.FileExists(xfb_path); ++round) tools_.PassRound();
}

}  // namespace xif
