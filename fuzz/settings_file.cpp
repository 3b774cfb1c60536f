// Settings files: any text is read without harm, and what is read from a file without errors can be saved and
// read again.

#include "settings/file.h"

#include <algorithm>

#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = TextOf(data, size);
  const settings::SettingsFile file = settings::ParseSettings(text);
  const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
  for (const settings::Finding& finding : file.findings)
    EXPECT_THAT(finding.line >= 1 && finding.line <= lines && !finding.text.empty());
  if (file.HasErrors()) return 0;
  const settings::SettingsFile again = settings::ParseSettings(SettingsText(file.settings));
  EXPECT_THAT(!again.HasErrors());
  EXPECT_THAT(again.settings.texts == file.settings.texts);
  for (const settings::OriginRow& row : settings::OriginRows())
    EXPECT_THAT(again.settings.origin.*row.text == file.settings.origin.*row.text);
  return 0;
}
