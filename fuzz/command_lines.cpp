// Command lines of the plug-in and of the director. The director's words are on separate lines.

#include "director/command_line.h"
#include "fuzz.h"
#include "startup/command_line.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view given = TextOf(data, size);
  const startup::CommandLine plug_in = startup::ParseCommandLine(given);
  EXPECT_THAT(plug_in.deregistration_mode >= -1 && plug_in.deregistration_mode <= 1);

  std::vector<std::string> words(1);
  for (const char c : given) c == '\n' ? words.emplace_back() : words.back() += std::string(c != 0, c);
  const director::ParsedCommandLine parsed = director::ParseCommandLine(words);
  EXPECT_THAT(parsed.run || !parsed.message.empty());
  EXPECT_THAT(!parsed.run || parsed.exit_code == 0);
  return 0;
}
