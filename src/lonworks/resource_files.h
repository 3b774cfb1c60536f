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

/// The device's resource files on this computer: type and format files in a folder of their own below the
/// LonWorks folder, written for the program IDs that begin with the maker's prefix.
///
/// They come with the device, the plug-in brings none; registration adds those that are there to the
/// platform's catalogue. For configuring, a folder with at least one type file and one format file counts.
class ResourceFiles {
 public:
  ResourceFiles() = default;
  ResourceFiles(const registry::CRegistry& registry, const platform::Program& program);

  /// The files are there. False also where the LonWorks folder is unknown or cannot be read.
  bool Present(const platform::Files& files) const;

  /// The names of the type, profile and format files that are there.
  std::vector<std::string> Names(const platform::Files& files) const;

  /// The scope of the files, from the length of the program-ID prefix: 3 one maker, 4 one class of its
  /// devices, 5 one subclass, 6 one model; 0, the standard's own, for anything else.
  std::int32_t Scope() const;

  /// What stands before a type of these files in its fully qualified name: "#8000D30000000000[3].".
  std::string UserTypeOwner() const;

  const std::string& folder() const { return folder_; }

 private:
  std::string folder_;
  std::string program_id_prefix_;
};

/// The LonWorks folder that a catalogue lies in, from a path with or without the catalogue's file name; empty
/// where that tells none.
std::string FolderAboveCatalog(std::string_view catalog_path);

/// The platform's catalogue of resource files, through which it finds the types and formats of devices.
///
/// Neither its format nor the tool that adds to it is in a manual that we have. What is chosen, all of it
/// here: the names of the files in it can be read, in letters of one or two bytes, and the tool is
/// `bin\LDRFCAT "<catalogue>" "<folder>"`, which ends with exit code 0 when the files of the folder are in.
class ResourceCatalog {
 public:
  /// `told` is where the open system says that it is, which may be a path of another computer; else it is
  /// looked for in the LonWorks folder.
  ResourceCatalog(const std::string& told, const std::string& lonworks_folder, const platform::Files& files);

  /// One of the files is not in it. A catalogue that is there and cannot be read, as while another program
  /// writes to it, counts as complete.
  bool Lacks(const std::vector<std::string>& file_names) const;

  /// Has the tool add all files of the folder.
  Tools::Outcome Add(const std::string& folder, Tools& tools) const;

 private:
  const platform::Files& files_;
  std::string path_;
};

}  // namespace lonworks
