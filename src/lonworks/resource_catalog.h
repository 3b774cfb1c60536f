#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "lonworks/tools.h"
#include "platform/files.h"

namespace lonworks {

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
