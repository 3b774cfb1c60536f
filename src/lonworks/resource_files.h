#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lonworks/tools.h"
#include "platform/files.h"
#include "platform/program.h"
#include "registry/registry.h"

namespace lonworks {

/// The scope of resource files, from the length of their program-ID prefix: 3 one manufacturer, 4 one class
/// of its devices, 5 one subclass, 6 one model; 0 (standard) for any other length.
std::int32_t ScopeOf(std::string_view program_id_prefix);

/// The start of the fully qualified names of the types that are for program IDs with this beginning:
/// "#8000D30000000000[3].".
std::string UserTypeOwner(std::string_view program_id_prefix);

/// The device's resource files on this computer: type and format files in their own folder below the LonWorks
/// folder, for the program IDs that begin with the manufacturer's prefix.
///
/// They come with the device; the plug-in installs none. Registration adds existing ones to the platform's
/// catalogue. Configuring needs at least one type file and one format file.
class ResourceFiles {
 public:
  ResourceFiles() = default;
  ResourceFiles(const registry::CRegistry& registry, const platform::Program& program);

  /// The files exist. False also if the LonWorks folder is unknown or cannot be read.
  bool Present(const platform::Files& files) const;

  /// The names of the type, profile and format files.
  std::vector<std::string> Names(const platform::Files& files) const;

  std::int32_t Scope() const { return ScopeOf(program_id_prefix_); }

  std::string UserTypeOwner() const { return lonworks::UserTypeOwner(program_id_prefix_); }

  const std::string& folder() const { return folder_; }

 private:
  std::string folder_;
  std::string program_id_prefix_;
};

/// The LonWorks folder of a catalogue path with or without a file name; empty if the path contains none.
std::string FolderAboveCatalog(std::string_view catalog_path);

/// The platform's catalogue of resource files, in which it finds the types and formats of devices.
///
/// No manual that we have describes its format or the tool that adds to it. Only this class chooses: the file
/// names in it are readable, in letters of one or two bytes, and the tool is `bin\LDRFCAT "<catalogue>"
/// "<folder>"`, which ends with exit code 0 once the folder's files are in it.
class ResourceCatalog {
 public:
  /// `reported` is its path according to the open system, possibly on another computer. If there is no such
  /// file here, uses the catalogue in the LonWorks folder.
  ResourceCatalog(const std::string& reported, const std::string& lonworks_folder,
                  const platform::Files& files);

  /// One of the files is missing from it. A catalogue that cannot be read, for example because another
  /// program is writing to it, counts as complete.
  bool Lacks(const std::vector<std::string>& file_names) const;

  /// Runs the tool to add all files of the folder.
  Tools::Outcome Add(const std::string& folder, Tools& tools) const;

 private:
  const platform::Files& files_;
  std::string path_;
};

}  // namespace lonworks
