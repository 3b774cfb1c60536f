#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>

#include "registration/main.h"
#include "simulator/files.h"
#include "support/world.h"

/// The plug-in with the demo file of many networks and the thermostat's interface file.
struct RegistrationWorld : World {
  static constexpr const char* kXif = "C:\\LonWorks\\Import\\Korvell\\QM5R.XIF";

  RegistrationWorld() : World(ManyNetworks()) {
    files.Write(kXif, "File\r\n\r\n\r\n80:00:D3:55:00:04:04:1D\r\n");
    files.Write("C:\\LonWorks\\Import\\Korvell\\QM5R.XFB", "x");
    files.Link("D:\\Demo Works\\Import", "C:\\LonWorks\\Import");
    simulation->read_file = [this](const std::string& path) -> std::optional<std::string> {
      if (!files.FileExists(path)) return std::nullopt;
      return files.ReadStart(path, 1000);
    };
    desktop.on_yield = [this] {
      if (!progress.Status().empty() && (statuses.empty() || statuses.back() != progress.Status()))
        statuses.push_back(progress.Status());
    };
  }

  std::string Saved() const { return simulator::WriteInstallation(simulation->installation()); }

  std::vector<std::string> statuses;
  registration::MMain::Process by_hand = ByHand([] {});

 private:
  static std::string ManyNetworks() {
    std::ostringstream text;
    text << std::ifstream(std::filesystem::path(QM5R_DEMO_NETWORK).replace_filename("many-networks.json"))
                .rdbuf();
    return text.str();
  }
};
