// The program ID in an external interface file: empty, or at most 16 characters in at least 16 bytes.

#include "fuzz.h"
#include "headless/computer.h"
#include "xif/search.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  headless::MemoryFiles files;
  files.Write("C:\\x.xif", std::string(TextOf(data, size)));
  const std::string id = xif::ReadXifProgramId(files, "C:\\x.xif");
  std::size_t characters = 0;
  for (const char c : id) characters += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  EXPECT_THAT(id.empty() || (characters <= 16 && id.size() >= 16));
  return 0;
}
