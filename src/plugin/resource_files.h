#pragma once

#include <cstdint>
#include <string>

#include "platform/files.h"
#include "platform/program.h"
#include "registry/registry.h"

namespace plugin {

/// The device's resource files on this computer: type and format files in a folder of their own below the
/// LonWorks folder, written for the program IDs that begin with the maker's prefix.
///
/// What makes them "registered" to the platform stands in a catalogue whose format is not public; the files
/// in their folder are what can be seen, so a folder with at least one type file and one format file counts.
/// They come with the device: the plug-in brings none, and its registration adds none to the catalogue.
class ResourceFiles {
 public:
  ResourceFiles() = default;
  ResourceFiles(const registry::CRegistry& registry, const platform::Program& program);

  /// The files are there. False also where the LonWorks folder is unknown or cannot be read.
  bool Present(const platform::Files& files) const;

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

}  // namespace plugin
