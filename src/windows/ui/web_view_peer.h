#pragma once

#include <memory>

#include "windows/ui/embedded_browser.h"
#include "windows/ui/native_peer.h"

namespace windows {

/// Shows the page's text, to be scrolled and copied, and in front of it the page itself as soon as the
/// system's browser has it. The browser is not made before the text is first seen; one that does not have the
/// page within a moment goes again.
class WebViewPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;
  ui::Extent PreferredSize() const override;
  HBRUSH Colors(HDC dc) override;
  bool UseKey(MSG& message) override;

 protected:
  void MakeWindow() override;
  void Rescale() override;
  void Show(ui::Aspect aspect) override;
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Destroying() override { browser_.reset(); }

 private:
  void FitScrollBar();
  void WaitForPage();
  void ShowPage();
  void FitPage();

  std::unique_ptr<EmbeddedBrowser> browser_;
  bool asked_ = false;
  bool page_shown_ = false;
  int waits_ = 0;
};

}  // namespace windows
