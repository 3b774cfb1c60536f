#include <algorithm>
#include <map>
#include <regex>
#include <set>

#include "help_file/project.h"
#include "help_file/source.h"
#include "support/user.h"

namespace {

using Texts = std::map<std::string, std::string>;

Texts Made(const std::vector<help_file::File>& sources) {
  Texts made;
  for (const help_file::File& file : help_file::MakeProject(sources)) made[file.name] = file.content;
  return made;
}
const std::vector<help_file::File>& Sources() {
  static const auto sources = help_file::ReadFolder(HELP_SOURCES);
  return sources;
}
bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(HelpFile, TopicsShowLimitsAndMeanings) {
  Texts made = Made(Sources());
  const std::pair<const char*, const char*> cases[] = {
      {"txtnvi0.html", "4.5&nbsp;to&nbsp;32&nbsp;&deg;C, or 40&nbsp;to&nbsp;90&nbsp;&deg;F"},
      {"txtnvi0.html", "Room temperature that heating maintains while the room is occupied."},
      {"txtnvi6.html", "-2.5&nbsp;to&nbsp;2.5&nbsp;&deg;C, or -5&nbsp;to&nbsp;5&nbsp;&deg;F"},
      {"txtnvi8.html", "&ldquo;Dehumidifiacation hysteresis&rdquo;"},
      {"cbnvi5.html", "<code>FLOATING</code></th><td>The outputs drive floating actuators."}};
  for (const auto& [file, text] : cases) EXPECT_TRUE(Contains(made[file], text)) << file << ' ' << text;
}

TEST(HelpFile, HasATopicInTheContentsForEveryContext) {
  Texts made = Made(Sources());
  std::set<int> contexts = {1206, 1207};
  Opened opened;
  for (const model::FieldRow& field : model::Fields())
    contexts.insert(opened.main.screen.Find(field.control)->help_context);
  for (const ui::Control* button : {&opened.main.cmdApply, &opened.main.cmdCancel, &opened.main.cmdRefresh,
                                    &opened.main.cmdExit, &opened.main.cmdViewLog})
    contexts.insert(button->help_context);
  contexts.insert(opened.main.obUnits[0].help_context);
  contexts.insert(model::kPageTopics.begin(), model::kPageTopics.end() - 1);
  EXPECT_EQ(contexts.size(), model::Fields().size() + 14) << "two controls share a context";
  for (const int context : contexts) {
    const std::string name = "IDH_" + std::to_string(context);
    std::smatch alias;
    ASSERT_TRUE(std::regex_search(made[help_file::kProjectFile], alias, std::regex("\n" + name + "=(.*)\n")))
        << name;
    EXPECT_TRUE(made.contains(alias[1])) << alias[1];
    EXPECT_TRUE(Contains(made[help_file::kContentsFile], "\"" + alias[1].str() + "\"")) << alias[1];
    EXPECT_TRUE(Contains(made[help_file::kProjectFile], "#define " + name + " " + name.substr(4) + "\n"));
  }
}

TEST(HelpFile, HasNoBrokenLinksAndNoPlaceholders) {
  const Texts made = Made(Sources());
  const std::regex link("(?:href=|\"Local\" value=)\"([^\"]*)\""), left("\\{\\{|\\}\\}|\n@|\f|&amp;[a-z]+;");
  for (const auto& [name, text] : made) {
    EXPECT_FALSE(std::regex_search(text, left)) << name;
    for (std::sregex_iterator each(text.begin(), text.end(), link), end; each != end; ++each)
      EXPECT_TRUE(made.contains((*each)[1])) << name << ": " << (*each)[1];
  }
}

TEST(HelpFile, RefusesWrongSources) {
  const std::tuple<const char*, const char*, const char*> mistakes[] = {
      {"general.html", "@item AUTO ", "@index "},
      {"general.html", "@item AUTO ", "@item Auto "},
      {"pir.html", "@field txtNvi(20)", ""},
      {"pir.html", "@field txtNvi(20)", "@field txtNvi"},
      {"network.html", "{{link txtNvi(40)", "{{link txtNvi(38)"},
      {"log.html", "@context log", "@context logs"},
      {"contents.txt", "units.html", ""},
      {"pir.html", "@index", "@indices"}};
  for (const auto& [file, text, replacement] : mistakes) {
    std::vector<help_file::File> sources = Sources();
    auto& content = std::ranges::find(sources, file, &help_file::File::name)->content;
    content.replace(content.find(text), std::string(text).size(), replacement);
    EXPECT_THROW(help_file::MakeProject(sources), help_file::SourceError) << file << ' ' << replacement;
  }
}

}  // namespace
