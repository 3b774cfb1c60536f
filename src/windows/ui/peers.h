#pragma once

#include <memory>

#include "windows/ui/native_peer.h"

namespace windows {

using MakesPeer = std::unique_ptr<NativePeer>(PeerHost& host, Surface& parent, ui::Control& control);

/// One for each kind of control.
MakesPeer MakeTextField, MakeChoiceList, MakeLabel, MakeToggleButton, MakeListView, MakeWebView, MakePicture,
    MakeAnimationHost;
/// The default button has a heavier border.
std::unique_ptr<NativePeer> MakeButton(PeerHost& host, Surface& parent, ui::Control& button, bool is_default);
/// A frame inside another one has no border.
std::unique_ptr<NativePeer> MakeFrame(PeerHost& host, Surface& parent, ui::Control& frame, bool nested);
/// The grip in the corner resizes the window.
std::unique_ptr<NativePeer> MakeStatusBar(PeerHost& host, Surface& parent, ui::Control& bar, bool grip);

inline constexpr const wchar_t* kPutBack = L"Put &back this field";

}  // namespace windows
