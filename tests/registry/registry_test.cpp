#include "headless/computer.h"
#include "registry_contract.h"

namespace {

TEST(Registry, Contract) {
  headless::MemoryRegistry fake;
  RegistryContract(fake).Run();
  EXPECT_TRUE(fake.user.contains("SOFTWARE\\LonWorks\\LCA\\Applets\\QM5R Contract\\Section"));
}

}  // namespace
