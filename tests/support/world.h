#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "headless/plug_in.h"
#include "support/conditions.h"
#include "support/error_of.h"

/// The plug-in in Celsius on a simulated network, by default the demo, with the device's resource files.
class World : public headless::PlugIn {
 public:
  explicit World(const std::string& network_file = {});

  /// The object server requires something that the program detects and logs.
  bool FindsOut() const {
    const simulator::Strictness& strict = simulation->installation().strict;
    return strict.formats || strict.regional || strict.missing.contains("SourceOptions");
  }

  static platform::Value Get(platform::LateBound& api, std::string_view property);
  static void Put(platform::LateBound& api, std::string_view property, platform::Value value);
  static void Send(platform::LateBound& api, std::int32_t command, std::int32_t type,
                   const std::string& path);

  std::shared_ptr<plugin::LNSPlugInAPI> Configure(const std::string& path,
                                                  std::int32_t type = session::kAppDeviceType);

  std::string StatusPanel(std::size_t number) const { return main.StatusBar.Panels()[number - 1]; }
  std::string Shown(model::ControlRef control) const { return main.screen.Find(control)->Text(); }
  std::vector<std::string> MessageTexts() const;
  /// The only message shown; fails the test if there is none or more than one.
  const ui::Message& Message() const {
    EXPECT_EQ(desktop.messages.size(), 1u);
    return desktop.messages.at(0).message;
  }
  /// The operations on the object server whose lines contain the text: "nciSetPts Value", "T Open", or
  /// "nciSetPts Value=1,2" for a put. A failure ends with " !".
  std::vector<std::string> Operations(std::string_view text = "") const;
};

inline constexpr const char* kFirstThermostat = "Demo Tower/Demo Tower.Floor 1/Thermostat 101";
