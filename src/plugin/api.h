#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "automation/published.h"
#include "plugin/main_form.h"

namespace plugin {

/// The public automation class through which a director drives the plug-in: it names the network, places the
/// window and sends commands. Objects share the process's session and window and are counted; the last one to
/// go while the window is hidden ends the plug-in.
///
/// Raises plain numbers with the plug-in's name as source: 20000 and 20002 to 20006 with their fixed texts.
class LNSPlugInAPI : public automation::PublishedTable<LNSPlugInAPI> {
 public:
  LNSPlugInAPI(const Surroundings& surroundings, fMain& main);
  ~LNSPlugInAPI() override;

  static std::span<const automation::MemberRow<LNSPlugInAPI>> Members();

  void SendCommand(std::int32_t command_id, std::int32_t object_type, const std::string& data);

  void SetVisible(bool visible) { main_.SetVisible(visible); }
  void SetNetworkName(const std::string& name);
  void SetRemoteFlag(bool remote);
  void SetHeight(std::int32_t pixels);
  void SetWidth(std::int32_t pixels);
  void SetLeft(std::int32_t pixels);
  void SetTop(std::int32_t pixels);
  void SetMinimized(bool minimized);
  void SetDevelopmentProgramId(const std::string& program_id);

 private:
  struct Search {
    const session::SupportedCommand* row = nullptr;
    bool command_known = false;
  };
  void RunRegistration(std::int32_t command_id);
  Search FindCommand(std::int32_t command_id, std::int32_t object_type) const;
  void Dispatch(const session::SupportedCommand& row, const std::string& path);
  [[noreturn]] void Raise(std::int32_t number, const std::string& text) const;
  void CheckSizable() const;
  void CheckNormalState() const;

  Surroundings with_;
  fMain& main_;
  std::string network_interface_name_;
};

}  // namespace plugin
