#pragma once

#include <cstdint>
#include <string>
#include <vector>

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

}  // namespace lonworks
