#pragma once

#include <map>
#include <string>

#include "lns/object_model.h"
#include "session/services.h"

namespace registration {

/// A failed step of command registration, with the text for the user.
class Failure : public std::exception {
 public:
  explicit Failure(std::string text) : text_(std::move(text)) {}
  const char* what() const noexcept override { return text_.c_str(); }

 private:
  std::string text_;
};

/// The device templates of the network that is open on construction, whatever a director opens later. Records
/// in the registry which templates the plug-in created: only these are ever removed without a question.
class PlugInTemplates {
 public:
  explicit PlugInTemplates(const session::Services& services)
      : services_(services),
        network_(services.session.CurrentNetwork),
        system_(services.session.CurrentSystem) {}

  /// The template of the command's program ID. If the system has none, creates it from the device's external
  /// interface file, for which it searches the disk and then asks. On failure throws a Failure and leaves
  /// nothing behind.
  lns::DeviceTemplate FindOrMake(const session::SupportedCommand& command);

  enum class Unused { Ask, RemoveOwn };
  /// Removes templates that no device of the system uses: each after a question or, silently, those that this
  /// plug-in created. Removes none and throws if a device's template cannot be read.
  void RemoveUnused(Unused which) const;

 private:
  static constexpr const char* kOwnTemplates = "Templates";

  lns::DeviceTemplate Make(const session::SupportedCommand& command);
  std::string FindInterfaceFile(const std::string& program_id);
  std::string UniqueName(const std::string& wanted) const;
  void SetSearchFolder();
  void Forget(const std::string& template_name) const;
  std::string OwnTemplatesKey() const { return services_.identity.PlugInKey() + "\\" + kOwnTemplates; }
  /// The template's name in the registry.
  std::string NoteOf(const std::string& template_name) const;
  /// The program ID with which the plug-in created the template; empty if another program did.
  std::string Remembered(const std::string& template_name) const;
  void Remember(const std::string& template_name, const std::string& program_id) const;
  bool IsOwn(const lns::DeviceTemplate& device_template) const;

  const session::Services& services_;
  lns::Network network_;
  lns::System system_;
};

}  // namespace registration
