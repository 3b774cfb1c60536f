#pragma once

#include <map>
#include <string>

#include "lns/object_model.h"
#include "session/services.h"

namespace registration {

/// A failing step of command registration, with what the user is told of it.
class Failure : public std::exception {
 public:
  explicit Failure(std::string text) : text_(std::move(text)) {}
  const char* what() const noexcept override { return text_.c_str(); }

 private:
  std::string text_;
};

/// The device templates of one network, as the plug-in needs them: the one that is open when this is made,
/// whatever a director opens meanwhile. It remembers in the registry which templates it has made itself, so
/// that only those are ever removed without a question.
class PlugInTemplates {
 public:
  explicit PlugInTemplates(const session::Services& services)
      : services_(services),
        network_(services.session.CurrentNetwork),
        system_(services.session.CurrentSystem) {}

  /// The template of the command's program ID; where the system has none, one made from the device's external
  /// interface file, which is searched on disk and then asked for. Throws a Failure with nothing left behind.
  lns::DeviceTemplate FindOrMake(const session::SupportedCommand& command);

  enum class Unused { Ask, RemoveOwn };
  /// Removes templates that no device of the system refers to: each one that the user agrees to, or, without
  /// a word, those that this plug-in has made. Where a device cannot tell its template this fails, and none
  /// is removed.
  void RemoveUnused(Unused which) const;

 private:
  static constexpr const char* kOwnTemplates = "Templates";

  lns::DeviceTemplate Make(const session::SupportedCommand& command);
  std::string FindInterfaceFile(const std::string& program_id);
  std::string UniqueName(const std::string& wanted) const;
  void SetSearchFolder();
  void Forget(const std::string& template_name) const;
  std::string OwnTemplatesKey() const { return services_.identity.PlugInKey() + "\\" + kOwnTemplates; }
  /// The name under which the registry has the template.
  std::string NoteOf(const std::string& template_name) const;
  /// The program ID under which the template was made here; empty for another's.
  std::string Remembered(const std::string& template_name) const;
  void Remember(const std::string& template_name, const std::string& program_id) const;
  bool IsOwn(const lns::DeviceTemplate& device_template) const;

  const session::Services& services_;
  lns::Network network_;
  lns::System system_;
};

}  // namespace registration
