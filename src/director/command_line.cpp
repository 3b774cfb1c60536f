#include "director/command_line.h"

#include <limits>

namespace director {
namespace {

constexpr const char* kInterfaceHelp =
    "Work remotely through this network interface; \"Internet\" for a lightweight session";

const CLI::Range kPosition(-32768, 32767), kSize(1, 32767);

void AddAnswer(CLI::App& command, Options& options) {
  command
      .add_option_function<std::string>(
          "--answer", [&options](const std::string& answer) { options.answer = answer == "yes"; },
          "Answer the plug-in's questions, close its messages, cancel its dialogs")
      ->check(CLI::IsMember({"yes", "no"}));
}

void AddNetworkCommands(CLI::App& app, Options& options) {
  app.add_subcommand("networks", "List the networks")->callback([&] { options.command = Command::Networks; });

  CLI::App* devices = app.add_subcommand("devices", "List the devices of all networks, or of one");
  devices->add_option("network", options.network, "The network's name");
  devices->callback([&] { options.command = Command::Devices; });

  CLI::App* show = app.add_subcommand("show", "Show a device's variables, formatted and raw");
  show->add_option("path", options.path, "network/system.subsystem/device")->required();
  show->callback([&] { options.command = Command::Show; });

  const auto add_transfer = [&](const char* name, const char* description, Command command) {
    CLI::App* transfer = app.add_subcommand(name, description);
    transfer->add_option("path", options.path, "network/system.subsystem/device")->required();
    transfer->callback([&options, command] { options.command = command; });
  };
  add_transfer("download", "Send a device its configuration from the network database", Command::Download);
  add_transfer("upload", "Store a device's configuration in the network database", Command::Upload);

  CLI::App* commands = app.add_subcommand(
      "commands", "List the commands of plug-ins on all networks, one network or one device");
  commands->add_option("place", options.place, "The network's name, or network/system.subsystem/device");
  commands->callback([&] { options.command = Command::Commands; });

  CLI::App* templates =
      app.add_subcommand("templates", "List the device templates of all networks, or of one");
  templates->add_option("network", options.network, "The network's name");
  templates->callback([&] { options.command = Command::Templates; });

  CLI::App* interface = app.add_subcommand("interface", "Show or set the network interface of a network");
  interface->add_option("network", options.network, "The network's name")->required();
  auto* name = interface->add_option("name", options.interface_name, "The interface to set");
  interface->add_flag_callback("--none", [&] { options.interface_name.emplace(); }, "Set none: engineered mode")
      ->excludes(name);
  interface->callback([&] { options.command = Command::Interface; });
}

void AddConfigureCommand(CLI::App& app, Options& options) {
  CLI::App* configure = app.add_subcommand("configure", "Make the plug-in configure a device");
  ConfigureRequest& request = options.configure;
  configure->add_option("path", request.path, "network/system.subsystem/device")->required();
  configure->add_option("--object", request.lonmark_object, "Configure this LonMark object of the device");
  configure->add_option("--interface", request.interface_name, kInterfaceHelp);
  configure->add_option("--left", request.left, "Window position in pixels")->check(kPosition);
  configure->add_option("--top", request.top, "Window position in pixels")->check(kPosition);
  configure->add_option("--width", request.width, "Window size in pixels")->check(kSize);
  configure->add_option("--height", request.height, "Window size in pixels")->check(kSize);
  configure->add_option("--plug-in", options.plug_in, "ProgID of the plug-in")->capture_default_str();
  configure->add_flag("--hidden", request.hidden, "Do not show the window; answer questions with no");
  configure->add_flag("--wait", options.wait, "Stay until the user closes the window");
  AddAnswer(*configure, options);
  configure->callback([&] {
    options.command = Command::Configure;
    if (options.configure.hidden && !options.answer) options.answer = false;
  });

  CLI::App* screen = app.add_subcommand("screen", "Print what the plug-in's windows show, page by page");
  screen->callback([&] { options.command = Command::Screen; });
  app.add_subcommand("close", "Close the plug-in's window")->callback([&] {
    options.command = Command::Close;
  });
}

void AddRegistrationCommands(CLI::App& app, Options& options) {
  const auto add = [&](const char* name, const char* description, Command command) {
    CLI::App* added = app.add_subcommand(name, description);
    added->add_option("network", options.network, "The network's name")->required();
    added->add_option("--interface", options.configure.interface_name, kInterfaceHelp);
    added->add_option("--plug-in", options.plug_in, "ProgID of the plug-in")->capture_default_str();
    AddAnswer(*added, options);
    added->callback([&options, command] { options.command = command; });
  };
  add("register", "Make the plug-in add its commands to a network", Command::Register);
  add("deregister", "Make the plug-in remove its commands from a network", Command::Deregister);
}

void AddFaultCommands(CLI::App& app, Options& options) {
  CLI::App* fault = app.add_subcommand("fault", "Make the simulated network fail");
  fault->require_subcommand(1);

  CLI::App* add = fault->add_subcommand("add", "Make matching operations fail");
  CLI::Option* device = add->add_option("--device", options.fault.device, "Name or path; any if not given");
  add->add_option("--variable,--item", options.fault.variable,
                  "Variable, or network, template, LonMark object, interface or command; any if not given");
  add->add_option("--operation", options.fault.operation, "read, write or a member's name; any if not given");
  CLI::Option* occurrence = add->add_option("--occurrence", options.fault.occurrence,
                                            "Which matching operation fails, counted from now; 0 for all")
                                ->check(CLI::Range(0, std::numeric_limits<std::int32_t>::max()))
                                ->capture_default_str();
  add->add_option("--code", options.fault.code,
                  "The platform's error code; 0 takes the device off the network")
      ->check(CLI::Range(0, 65535))
      ->capture_default_str();
  add->callback([&options, device, occurrence] {
    if (device->empty() && occurrence->empty())
      throw CLI::RequiredError("--device or --occurrence (else every operation fails)");
    options.command = Command::FaultAdd;
  });

  fault->add_subcommand("list", "List the faults")->callback([&] { options.command = Command::FaultList; });

  fault->add_subcommand("clear", "Remove all faults")->callback([&] {
    options.command = Command::FaultClear;
  });

  CLI::App* vanish = fault->add_subcommand("vanish", "Take a device off the network");
  vanish->add_option("device", options.device, "Name or path")->required();
  vanish->callback([&] { options.command = Command::FaultVanish; });

  CLI::App* restore = fault->add_subcommand("restore", "Bring a vanished device back");
  restore->add_option("device", options.device, "Name or path")->required();
  restore->callback([&] { options.command = Command::FaultRestore; });
}

void AddSimulatorCommands(CLI::App& app, Options& options) {
  CLI::App* latency =
      app.add_subcommand("latency", "Show or set the delay of the simulated network's operations");
  latency->add_option("kind", options.latency_kind, "The kind of operation")
      ->check(CLI::IsMember({"any", "read", "write", "open", "test"}))
      ->capture_default_str();
  latency->add_option("milliseconds", options.latency_milliseconds, "The new latency")
      ->check(CLI::Range(0, 600000));
  latency->callback([&] { options.command = Command::Latency; });

  CLI::App* journal =
      app.add_subcommand("journal", "Print the operations that the simulated network has seen");
  journal->add_flag("--clear", options.clear, "Clear the journal afterwards");
  journal->callback([&] { options.command = Command::Journal; });

  app.add_subcommand("stop", "End the simulated object server")->callback([&] {
    options.command = Command::Stop;
  });
}

}  // namespace

ParsedCommandLine ParseCommandLine(std::vector<std::string> arguments, const std::string& version) {
  ParsedCommandLine parsed;
  CLI::App app("A small network tool: lists networks and devices and starts plug-ins.", "director");
  app.set_version_flag("--version", "director " + version);
  AddNetworkCommands(app, parsed.options);
  AddConfigureCommand(app, parsed.options);
  AddRegistrationCommands(app, parsed.options);
  AddFaultCommands(app, parsed.options);
  AddSimulatorCommands(app, parsed.options);
  static_cast<console::Parsed&>(parsed) = console::Parse(app, std::move(arguments));
  return parsed;
}

}  // namespace director
