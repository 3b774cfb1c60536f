// Network files: an error that names the file, or a network that is the same after writing and reading it.

#include "fuzz.h"
#include "simulator/errors.h"
#include "simulator/files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const auto installation = simulator::ReadInstallation(TextOf(data, size), "x.json");
    const std::string written = simulator::WriteInstallation(installation);
    EXPECT_THAT(simulator::WriteInstallation(simulator::ReadInstallation(written, "x.json")) == written);
  } catch (const simulator::FileError& error) {
    EXPECT_THAT(std::string_view(error.what()).find("x.json") != std::string_view::npos);
  }
  return 0;
}
