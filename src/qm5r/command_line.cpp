#include "qm5r/command_line.h"

namespace qm5r {
namespace {

constexpr const char* kPlaceHelp =
    "A file that ends in .qm5r, a device's path (network/system.subsystem/device), a pattern of paths in "
    "which * "
    "stands for any characters, or the name of a network";

void AddInterface(CLI::App& command, Options& options) {
  command.add_option("--interface", options.interface_name,
                     "Work remotely through this network interface; \"Internet\" for a lightweight session");
}

void AddSelection(CLI::App& command, Options& options) {
  command.add_option("--fields", options.fields,
                     "Only these fields, separated by commas; * stands for any characters");
  command.add_option("--except", options.except, "Not these fields");
  AddInterface(command, options);
}

void AddOptions(CLI::App& command, Options& options) {
  AddSelection(command, options);
  command.add_flag("--json", options.json, "Print JSON");
}

void AddSaving(CLI::App& command, Options& options) {
  command.add_flag("--force", options.force, "Replace existing files");
  command.add_flag("--anonymous", options.anonymous, "Leave out the names of the user and the computer");
}

void AddWriting(CLI::App& command, Options& options) {
  command.add_flag("--yes", options.yes, "Do not ask before writing");
  command.add_option("--records", options.records, "The folder of the records");
}

void AddPlanning(CLI::App& command, Options& options) {
  command.add_option("place", options.places,
                     "The file with the standard, or a plan; with --restore the devices");
  command.add_option("--to", options.to, "The devices: paths, patterns of paths, or networks");
  command.add_option("--restore", options.restore,
                     "Restore devices from this snapshot, each from the file of its path");
  command.add_flag("--out-of-range", options.out_of_range, "Write values outside the limits, too");
  AddOptions(command, options);
}

void AddCommands(CLI::App& app, Options& options) {
  const auto add = [&](const char* name, const char* description, Command command) {
    CLI::App* added = app.add_subcommand(name, description);
    added->callback([&options, command] { options.command = command; });
    return added;
  };
  const auto add_places = [&](CLI::App& command, const char* name) {
    command.add_option(name, options.places, kPlaceHelp)->required();
  };

  const auto add_place = [&](CLI::App& command, const char* name) {
    const auto take = [&options](const std::string& place) { options.places = {place}; };
    command.add_option_function<std::string>(name, take, kPlaceHelp)->required();
  };

  CLI::App* save = add("save", "Save the settings of a device in a file", Command::Save);
  add_place(*save, "path");
  save->add_option("file", options.target, "The file; by default the device's name and .qm5r");
  AddOptions(*save, options);
  AddSaving(*save, options);

  CLI::App* check = add("check", "Check files without a network", Command::Check);
  check->add_option("file", options.places, "Files; * stands for any characters")->required();
  check->add_flag("--json", options.json, "Print JSON");

  CLI::App* show = add("show", "Print the settings of files or devices", Command::Show);
  add_places(*show, "place");
  AddOptions(*show, options);
  show->add_flag("--fahrenheit", options.fahrenheit, "Show temperatures in degrees Fahrenheit");

  CLI::App* compare =
      add("compare", "Compare files or devices with the first one, the standard", Command::Compare);
  add_places(*compare, "place");
  AddOptions(*compare, options);
  compare->add_flag("--odd", options.odd, "Without a standard: find the devices that differ from most");
  compare->callback([&options] {
    options.command = Command::Compare;
    if (options.places.size() < 2 && !options.odd) throw CLI::RequiredError("A second place, or --odd,");
  });

  CLI::App* snapshot = add("snapshot", "Save every device in a file of its own", Command::Snapshot);
  add_place(*snapshot, "place");
  snapshot->add_option("folder", options.target, "Where the files go")->required();
  AddOptions(*snapshot, options);
  AddSaving(*snapshot, options);

  CLI::App* plan = add("plan", "Show what would change, without writing to a device", Command::Plan);
  AddPlanning(*plan, options);
  plan->add_option("-o,--output", options.target, "The file of the plan; it ends in .qm5rplan");
  plan->add_flag("--force", options.force, "Replace an existing file");

  CLI::App* apply = add("apply", "Write a plan to its devices, or plan and write", Command::Apply);
  AddPlanning(*apply, options);
  AddWriting(*apply, options);
  apply->add_option("--canary", options.canary,
                    "Begin with this many devices, and end if one of them is not done");
  apply->add_option("--stop-after", options.stop_after, "End after this many devices that are not done");

  const auto add_record = [&](CLI::App& command) {
    const auto take = [&options](const std::string& file) { options.places = {file}; };
    command.add_option_function<std::string>("record", take, "The record of a run")->required();
    AddWriting(command, options);
    command.add_flag("--json", options.json, "Print JSON");
    AddInterface(command, options);
  };
  CLI::App* resume = add("resume", "Go on with what a run has not done", Command::Resume);
  add_record(*resume);
  CLI::App* undo = add("undo", "Put back what a run wrote, where it is still so", Command::Undo);
  add_record(*undo);
  undo->add_option("path", options.to, "Only these devices; * stands for any characters")->expected(0, 1);

  CLI::App* history = add("history", "Print what was written to devices, when and by whom", Command::History);
  history->add_option("path", options.places, "Only these devices; * stands for any characters")
      ->expected(0, 1);
  history->add_option("--records", options.records, "The folder of the records");
  history->add_flag("--json", options.json, "Print JSON");

  CLI::App* report = add("report", "Make a page of what rooms hold and how they differ", Command::Report);
  add_place(*report, "place");
  report->add_option("-o,--output", options.target, "The report: .html, .csv or .json")->required();
  report->add_option("--standard", options.standard, "The file or device to compare with");
  AddSelection(*report, options);
  AddSaving(*report, options);
}

}  // namespace

ParsedCommandLine ParseCommandLine(std::vector<std::string> arguments, const std::string& version,
                                   bool has_simulator) {
  ParsedCommandLine parsed;
  CLI::App app(
      "Saves, checks, compares and applies the settings of QM5R-FC thermostats.\n\n"
      "Exit codes: 0 done, 1 wrong command line, 2 failed, 3 differences, 4 something could not be read.",
      "qm5r");
  app.set_version_flag("--version", "qm5r " + version);
  if (has_simulator)
    app.add_option("--network-file", parsed.options.network_file, "The simulated network to work on")
        ->envname("QM5R_NETWORK_FILE");
  app.fallthrough();
  AddCommands(app, parsed.options);
  static_cast<console::Parsed&>(parsed) = console::Parse(app, std::move(arguments));
  return parsed;
}

}  // namespace qm5r
