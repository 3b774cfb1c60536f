// qm5r: settings of thermostats on a simulated network. The one for Windows works on any object server.

#include <pwd.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <ctime>
#include <iostream>
#include <thread>

#include "local_files.h"
#include "qm5r/commands.h"
#include "simulator/simulation.h"

namespace {

std::string User() {
  char computer[256] = "";
  gethostname(computer, sizeof computer - 1);
  const passwd* const user = getpwuid(getuid());
  return std::string(user ? user->pw_name : "") + '@' + computer;
}

std::string Time() {
  const std::time_t now = std::time(nullptr);
  char text[] = "2026-11-23T10:15:00Z";
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", std::gmtime(&now));
  return text;
}

std::string LocalTime() {
  const std::time_t now = std::time(nullptr);
  char text[] = "2026-11-23 11:15 +0100";
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M %z", std::localtime(&now));
  return std::string(text).insert(sizeof text - 3, ":");
}

volatile std::sig_atomic_t is_stopped = 0;

std::optional<std::string> Ask(const std::string& question) {
  if (isatty(STDIN_FILENO) != 1) return std::nullopt;
  std::cerr << question << std::flush;
  std::string answer;
  return std::getline(std::cin, answer) ? std::optional(answer) : std::nullopt;
}

double Seconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

platform::LateBoundPtr OpenNetworkFile(const std::string& file) {
  if (file.empty())
    throw platform::Error(429, "qm5r",
                          "This program works on a simulated network: name its file with --network-file");
  return simulator::Simulation::FromFile(file, [](auto time) { std::this_thread::sleep_for(time); })
      ->CreateObjectServer();
}

}  // namespace

int main(int count, char** words) {
  const qm5r::ParsedCommandLine parsed =
      qm5r::ParseCommandLine({words + 1, words + count}, QM5R_VERSION, true);
  if (!parsed.run) {
    (parsed.exit_code == 0 ? std::cout : std::cerr) << parsed.message;
    return parsed.exit_code;
  }
  LocalFiles files;
  const std::string& network = parsed.options.network_file;
  qm5r::Computer computer{[&] { return OpenNetworkFile(network); },
                          files,
                          std::cout,
                          std::cerr,
                          isatty(STDERR_FILENO) == 1,
                          User(),
                          Time,
                          LocalTime,
                          Ask,
                          "records",
                          [] { return is_stopped != 0; },
                          Seconds};
  std::signal(SIGINT, [](int) { is_stopped = 1; });
  return qm5r::Run(parsed.options, computer);
}
