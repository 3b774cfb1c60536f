#include "console/command_line.h"

#include <algorithm>
#include <sstream>

namespace console {
namespace {

/// Names the given command, not only the program.
std::string FailureText(const CLI::App* app, const CLI::Error& error) {
  std::string name = app->get_name(), reason = error.what();
  for (; !app->get_subcommands().empty(); name += ' ' + app->get_name()) app = app->get_subcommands().front();
  if (app->get_require_subcommand_min() > 0) {
    const std::vector<std::string> unknown = app->remaining();
    reason = unknown.empty() ? "a command is required" : "there is no command \"" + unknown.front() + '"';
    std::string choices;
    for (const CLI::App* each : app->get_subcommands({}))
      choices += (choices.empty() ? ": " : ", ") + each->get_name();
    reason += choices;
  }
  return name + ": " + reason + "\nRun \"" + name + " --help\" for more information.\n";
}

}  // namespace

Parsed Parse(CLI::App& app, std::vector<std::string> arguments) {
  Parsed parsed;
  app.require_subcommand(1);
  app.failure_message(FailureText);
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(arguments);
    parsed.run = true;
  } catch (const CLI::ParseError& error) {
    std::ostringstream out;
    parsed.exit_code = app.exit(error, out, out) == 0 ? 0 : 1;
    parsed.message = out.str();
  }
  return parsed;
}

std::string ErrorText(const std::string& program, const platform::Error& error) {
  const auto number = static_cast<std::uint32_t>(error.number());
  const auto code = number - static_cast<std::uint32_t>(platform::kObjectServerErrorBase);
  // Lower codes are COM's own.
  constexpr std::uint32_t kLeastCode = 0x200;
  std::ostringstream text;
  text << program << ": ";
  if (code >= kLeastCode && code <= 0xFFFF)
    text << "object server error " << code;
  else if (number < 0x80000000u)
    text << "error " << number;
  else
    text << "error 0x" << std::hex << std::uppercase << number;
  text << " (" << error.source() << "): " << error.description() << '\n';
  return text.str();
}

}  // namespace console
