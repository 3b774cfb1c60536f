#pragma once

#include "headless/user.h"
#include "support/world.h"

using headless::User;

struct Opened : World, User {
  explicit Opened(const std::string& path = kFirstThermostat, const char* units = "0")
      : User(static_cast<headless::PlugIn&>(*this)) {
    registry.SetMachineSetting(identity.PlugInKey(), "DisplayUnits", units);
    api = Configure(path);
    simulation->journal().Clear();
  }
  void Apply() { Press(main.cmdApply); }

  /// Every attempt to write a value, in order: "nciSetPts Value=<text>".
  std::vector<std::string> Writes() const { return Operations(" Value="); }
  std::string Raw(const char* variable) {
    const auto found = main.CurrentDevice().Interface().NetworkVariables().Item(variable);
    const std::string format = found.FormatType();
    found.SetFormatType("RAW_HEX_PACKED");
    const std::string raw = found.Value();
    found.SetFormatType(format);
    return raw;
  }

  std::shared_ptr<plugin::LNSPlugInAPI> api;
};
