#pragma once

#include <nlohmann/json.hpp>
#include <sstream>

#include "qm5r/commands.h"
#include "support/world.h"
#include "text/pattern.h"

/// Types commands on a computer with a simulated network.
struct CommandUser : World {
  using World::World;

  int Run(std::vector<std::string> words) {
    out.str("");
    errors.str("");
    const auto parsed = qm5r::ParseCommandLine(std::move(words), "1.0.0", false);
    if (!parsed.run) {
      errors << parsed.message;
      return parsed.exit_code;
    }
    qm5r::Computer computer{[this] { return MakeObjectServer(); },
                            files,
                            out,
                            errors,
                            false,
                            "me@here",
                            [] { return "2026-11-23T10:15:00Z"; },
                            [] { return "2026-11-23 11:15 +01:00"; },
                            [this](const std::string&) { return answer; },
                            "C:\\records",
                            [this] { return is_stopped && is_stopped(); },
                            [] { return 0.0; }};
    return qm5r::Run(parsed.options, computer);
  }
  nlohmann::json Json() const { return nlohmann::json::parse(out.str()); }
  std::string File(const std::string& path) const { return files.ReadStart(path, 1 << 20); }
  simulator::stored::Device& Device(const std::string& subsystem, const std::string& name) {
    return simulator::stored::DeviceOf(simulation->installation(), {"Demo Tower", {subsystem}, name});
  }

  std::ostringstream out, errors;
  std::optional<std::string> answer;
  std::function<bool()> is_stopped;
};
