#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/error.h"
#include "registry/registry.h"

/// The behaviour of CRegistry with any registry. Works below one key and leaves nothing behind.
class RegistryContract {
 public:
  explicit RegistryContract(platform::Registry& registry) : settings_(registry, "QM5R Contract") {}

  void Run() {
    TextsAreReadBack();
    OtherTypesAndMissingValuesReadAsEmpty();
    SubkeysAreEnumerated();
    KeysAreDeletedWithAllBelow();
  }

 private:
  static constexpr const char* kKey = "SOFTWARE\\QM5R Contract";

  void TextsAreReadBack() {
    for (const char* text : {"3.0", "x", "Korvell Inc.", "LonTalk\u00AE thermostat"}) {
      settings_.SetMachineSetting(kKey, "Value", text);
      EXPECT_EQ(settings_.MachineSetting(kKey, "Value"), text);
      settings_.SetMachineSetting(kKey, "", text);
      EXPECT_EQ(settings_.MachineSetting(kKey, ""), text);
      settings_.SetAppSetting("Section", "Value", text);
      EXPECT_EQ(settings_.AppSetting("Section", "Value"), text);
    }
    settings_.SetMachineSetting(kKey, "Value", std::string("cut\0here", 8));
    EXPECT_EQ(settings_.MachineSetting(kKey, "Value"), "cut");
    settings_.SetMachineSetting(kKey, "Value", "");
    EXPECT_EQ(settings_.MachineSetting(kKey, "Value"), "");
  }

  void OtherTypesAndMissingValuesReadAsEmpty() {
    EXPECT_EQ(settings_.MachineSetting(kKey, "None"), "");
    EXPECT_EQ(settings_.MachineSetting("SOFTWARE\\QM5R Contract\\None", ""), "");
    EXPECT_EQ(settings_.AppSetting("None", "Value"), "");
  }

  void SubkeysAreEnumerated() {
    for (const char* name : {"A", "B", "C"})
      settings_.SetMachineSetting(std::string(kKey) + "\\" + name, "", name);
    std::string names = settings_.FindFirstMachineKey(kKey);
    for (int i = 0; i < 2; ++i) names += settings_.GetNextMachineKey();
    EXPECT_EQ(names, "ABC");
    EXPECT_EQ(settings_.GetNextMachineKey(), "");
    EXPECT_EQ(settings_.GetNextMachineKey(), "");
    EXPECT_EQ(settings_.FindFirstMachineKey("SOFTWARE\\QM5R Contract\\None"), "");
    EXPECT_EQ(settings_.GetNextMachineKey(), "");
    settings_.FindFirstMachineKey(kKey);
  }

  void KeysAreDeletedWithAllBelow() {
    settings_.SetMachineSetting(std::string(kKey) + "\\A\\1\\x", "", "deep");
    settings_.SetMachineSetting(std::string(kKey) + "\\A\\2", "", "deep");
    EXPECT_TRUE(settings_.DeleteMachineKey(kKey));
    EXPECT_EQ(settings_.MachineSetting(std::string(kKey) + "\\A\\2", ""), "");
    EXPECT_FALSE(settings_.DeleteMachineKey(kKey));
  }

  registry::CRegistry settings_;
};
