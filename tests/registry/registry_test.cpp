#include "headless/computer.h"
#include "registry_contract.h"
#include "support/error_of.h"

namespace {

TEST(Registry, MeetsTheContract) {
  headless::MemoryRegistry fake;
  RegistryContract(fake).Run();
  EXPECT_TRUE(fake.user.contains("SOFTWARE\\LonWorks\\LCA\\Applets\\QM5R Contract\\Section"));
}

TEST(Registry, RefusedWritesThrow) {
  headless::MemoryRegistry fake;
  registry::CRegistry settings(fake, "name");
  fake.fails = [] { return true; };
  const std::function<void()> writes[] = {[&] { settings.SetMachineSetting("SOFTWARE\\A", "v", "x"); },
                                          [&] { settings.SetAppSetting("s", "v", "x"); }};
  for (const auto& write : writes) EXPECT_EQ(ErrorOf(write).number(), static_cast<std::int32_t>(0x80040201u));
}

TEST(Registry, DeletionStopsAtAnUndeletableSubkey) {
  headless::MemoryRegistry fake;
  registry::CRegistry settings(fake, "name");
  for (const char* key : {"SOFTWARE\\K\\A", "SOFTWARE\\K\\B\\C", "SOFTWARE\\K\\D"})
    settings.SetMachineSetting(key, "", "x");
  fake.undeletable = "SOFTWARE\\K\\B\\C";
  EXPECT_FALSE(settings.DeleteMachineKey("SOFTWARE\\K"));
  EXPECT_EQ(settings.MachineSetting("SOFTWARE\\K\\B\\C", ""), "x");
}

}  // namespace
