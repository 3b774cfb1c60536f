#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "platform/error.h"

/// What the console programs have in common.
namespace console {

/// A command line that is to be run, or a text for the user and the exit code.
struct Parsed {
  bool run = false;
  std::string message;
  int exit_code = 0;
};

/// Parses the arguments, in UTF-8 and without the program, of a program with commands. A failure names the
/// given command and ends with exit code 1.
Parsed Parse(CLI::App& app, std::vector<std::string> arguments);

/// "director: object server error 18200 (LNS Simulator): ..." with the platform's code, a plug-in's plain
/// number or the system's hexadecimal number, and a line end.
std::string ErrorText(const std::string& program, const platform::Error& error);

}  // namespace console
