#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "automation/convert.h"
#include "automation/published.h"
#include "plugin/main_form.h"

namespace plugin {

/// The public automation class through which a director drives the plug-in: it names the network, places the
/// window and sends commands. Objects share the process's session and window and are counted; when the last
/// one is released while the window is hidden, the plug-in ends.
///
/// Raises plain numbers with the plug-in's name as source: 20000 and 20002 to 20006 with their fixed texts.
class LNSPlugInAPI : public automation::PublishedTable<LNSPlugInAPI> {
 public:
  LNSPlugInAPI(const session::Services& services, fMain& main);
  ~LNSPlugInAPI() override;

  static std::span<const automation::MemberRow<LNSPlugInAPI>> Members();

  void SendCommand(std::int32_t command_id, std::int32_t object_type, const std::string& data);

  void SetVisible(bool visible);
  void SetNetworkName(const std::string& name);
  bool RemoteFlag() const;
  void SetRemoteFlag(bool remote);
  void SetMinimized(bool minimized);
  void SetDevelopmentProgramId(const std::string& program_id);

 private:
  void RunRegistration(std::int32_t command_id);
  void Dispatch(const session::SupportedCommand& row, const std::string& path);
  [[noreturn]] void Raise(std::int32_t number, const std::string& text) const;

  /// The window's position and size, in pixels of the screen.
  enum class Side { Left, Top, Width, Height };
  double TwipsPerPixel(Side side) const;
  std::int32_t PixelsOf(Side side) const;
  void SetPixelsOf(Side side, std::int32_t pixels);
  template <Side side>
  static constexpr Row SideRow(std::int32_t number, std::string_view name) {
    return Property(
        number, name, [](LNSPlugInAPI& api) { return api.PixelsOf(side); },
        [](LNSPlugInAPI& api, const platform::Value& pixels) {
          api.SetPixelsOf(side, automation::ToInteger(pixels));
        });
  }

  const session::Services& services_;
  fMain& main_;
  std::string network_interface_name_;
};

}  // namespace plugin
