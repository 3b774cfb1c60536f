#pragma once

#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/screen_layout.h"

namespace help_file {

/// A text file: its name without folder, and its content.
struct File {
  std::string name;
  std::string content;
};

/// The files of a folder, sorted by name. Throws if one cannot be read.
std::vector<File> ReadFolder(const std::filesystem::path& folder);
/// Throws if a file cannot be written.
void WriteFolder(const std::filesystem::path& folder, const std::vector<File>& files);

/// A mistake in the sources; the text includes its place.
struct SourceError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct FieldSource {
  model::ControlRef control;
  std::vector<std::string> keywords;
  std::map<std::string, std::string, std::less<>> items;
  std::string text;
};

/// One source of the help file: HTML without head and body. A line that begins with "@" is a directive:
///
///   @title <text>        the topic's title; a page's caption by default
///   @page <number>       the topic is about this page of the screen
///   @context <name>      the topic is about this window or button; a topic has one context
///   @index <keyword>     another entry of the index
///   @fields              a table of the fields described below
///   @field <control>     from here about this field, which gets its own topic
///   @item <item> <text>  what an item of the field's list means
///
/// In a text, {{link txtNvi(3) <words>}} is a link to the field's topic and {{range txtNvi(3)}} the field's
/// range.
struct TopicSource {
  std::string file;
  std::string title;
  int page = -1;
  /// 0 for none.
  int context = 0;
  std::vector<std::string> keywords;
  /// kFieldsMark marks the place of the table of fields.
  std::string text;
  std::vector<FieldSource> fields;
};
inline constexpr char kFieldsMark = '\f';

/// Throws SourceError.
TopicSource ParseSource(const File& file);

/// The control of a name such as "txtNvi(3)"; ScreenArray::None for any other text.
model::ControlRef ControlNamed(std::string_view name);
std::string NameOf(model::ControlRef control);

}  // namespace help_file
