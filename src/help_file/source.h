#pragma once

#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/screen_layout.h"

namespace help_file {

/// A text file: its name without folder, and what stands in it.
struct File {
  std::string name;
  std::string content;
};

/// The files of a folder in the order of their names. Throws where one cannot be read.
std::vector<File> ReadFolder(const std::filesystem::path& folder);
/// Throws where a file cannot be written.
void WriteFolder(const std::filesystem::path& folder, const std::vector<File>& files);

/// A mistake in the sources; the text names the source and the line.
struct SourceError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct FieldSource {
  model::ControlRef control;
  std::vector<std::string> keywords;
  std::map<std::string, std::string, std::less<>> items;
  std::string text;
};

/// One source of the help file: HTML without head and body. A line that begins with "@" is a
/// directive:
///
///   @title <text>        what the topic is called; that of a page is the page's caption
///   @page <number>       the topic of this page of the screen
///   @context <name>      the topic of this window or button; the compiler takes one context a topic
///   @index <keyword>     a further entry of the index
///   @fields              here stands a table of the fields described below
///   @field <control>     from here on about this field, which gets a topic of its own
///   @item <item> <text>  what an item of the field's list means
///
/// {{link txtNvi(3) <words>}} in a text is a link to the field's topic, {{range txtNvi(3)}} the field's
/// range.
struct TopicSource {
  std::string file;
  std::string title;
  int page = -1;
  /// 0 for none.
  int context = 0;
  std::vector<std::string> keywords;
  /// With kFieldsMark where the table of the fields belongs.
  std::string text;
  std::vector<FieldSource> fields;
};
inline constexpr char kFieldsMark = '\f';

/// Throws SourceError.
TopicSource ParseSource(const File& file);

/// The control named as in "txtNvi(3)"; ScreenArray::None for any other text.
model::ControlRef ControlNamed(std::string_view name);
std::string NameOf(model::ControlRef control);

}  // namespace help_file
