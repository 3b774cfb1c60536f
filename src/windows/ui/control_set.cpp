#include "windows/ui/control_set.h"

#include <windows.h>

#include <commctrl.h>

#include <map>

#include "windows/com/wide_text.h"
#include "windows/ui/peers.h"
#include "windows/ui/tabs_peer.h"

namespace windows {

using Kind = ui::Control::Kind;

namespace {

TTTOOLINFOW ControlTool(const NativePeer& peer) {
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.uFlags = TTF_IDISHWND;
  tool.hwnd = peer.parent().handle();
  tool.uId = reinterpret_cast<UINT_PTR>(peer.handle());
  return tool;
}

TTTOOLINFOW PlaceTool(const NativePeer& peer) {
  TTTOOLINFOW tool = ControlTool(peer);
  tool.uFlags = 0;
  tool.uId = reinterpret_cast<UINT_PTR>(&peer);
  GetWindowRect(peer.handle(), &tool.rect);
  MapWindowPoints(nullptr, tool.hwnd, reinterpret_cast<POINT*>(&tool.rect), 2);
  return tool;
}

BOOL CALLBACK Tell(HWND window, LPARAM what) {
  const MSG& told = *reinterpret_cast<const MSG*>(what);
  SendMessageW(window, told.message, told.wParam, told.lParam);
  return TRUE;
}

}  // namespace

ControlSet::ControlSet(Surface& window, ui::Form& form)
    : window_(window), form_(form), focus_(form, [this](ui::Control& control) {
        if (NativePeer* peer = PeerOf(control)) peer->Prepare();
      }) {}

ControlSet::~ControlSet() { Close(); }

void ControlSet::Create() {
  theme_ = ui_thread().ThemeFor(ui_thread().FirstDpi(window_.handle()));
  MakePeers(form_.layout(), window_, false);
  MeasureLayout();
}

void ControlSet::Appear() {
  if (std::exchange(appeared_, true)) return;
  MakeWindowsOn(window_);
  for (const auto& peer : peers_)
    if (peer->control().kind() == Kind::Tabs) static_cast<const TabsPeer&>(*peer).MakeFrontPage();
}

void ControlSet::PageAppears(Surface& page) {
  if (appeared_) MakeWindowsOn(page);
}

void ControlSet::MakeWindowsOn(const Surface& surface) {
  for (const auto& peer : peers_) {
    if (&peer->parent() != &surface || peer->handle()) continue;
    peer->Make();
    if (!peer->control().ToolTip().empty()) ShowToolTip(*peer);
  }
}

void ControlSet::MakeAllWindows() {
  Appear();
  for (const auto& peer : peers_) MakeWindowsOn(peer->parent());
}

void ControlSet::TakeTheme(std::shared_ptr<const Theme> theme) {
  const auto former = std::exchange(theme_, std::move(theme));  // keeps its fonts while they are in use
  for (const auto& peer : peers_) peer->TakeTheme();
  if (tool_tips_) FitToolTips();
  MeasureLayout();
}

void ControlSet::HandOn(UINT message, WPARAM wparam, LPARAM lparam) const {
  const MSG handed_on{nullptr, message, wparam, lparam, 0, {}};
  EnumChildWindows(window_.handle(), Tell, reinterpret_cast<LPARAM>(&handed_on));
  if (tool_tips_) SendMessageW(tool_tips_, message, wparam, lparam);
}

void ControlSet::MeasureLayout() {
  const ui::Extent screen = WorkAreaAround(window_.handle()), frame = Frame();
  for (const bool tight : {false, true}) {
    is_tight_ = tight;
    engine_.emplace(form_.layout(), static_cast<const ui::Metrics&>(*this));
    if (Minimum().width + frame.width <= screen.width && Minimum().height + frame.height <= screen.height)
      return;
  }
}

void ControlSet::MakePeers(const ui::Box& box, Surface& parent, bool nested) {
  // A frame is below its content, because the system puts new windows under their older siblings.
  if (box.kind == ui::Box::Kind::Frame) MakePeers(box.children.at(0), parent, true);
  if (box.control) {
    peers_.push_back(MakePeer(*box.control, parent, nested));
    by_control_[box.control] = peers_.back().get();
    peers_.back()->TakeTheme();
  }
  if (box.kind == ui::Box::Kind::Frame) return;
  if (box.kind == ui::Box::Kind::Pages) return MakePages(box, parent);
  for (const ui::Box& child : box.children) MakePeers(child, parent, nested);
}

void ControlSet::MakePages(const ui::Box& box, Surface& parent) {
  MakeWindowsOn(parent);  // including the tab control, which contains the pages and has their measures
  const auto& tabs = *static_cast<const TabsPeer*>(by_control_.at(box.control));
  for (std::size_t index = 0; index < box.children.size(); ++index)
    MakePeers(box.children[index], tabs.page(index), false);
}

std::unique_ptr<NativePeer> ControlSet::MakePeer(ui::Control& control, Surface& parent, bool nested) {
  switch (control.kind()) {
    case Kind::TextField:
      return MakeTextField(*this, parent, control);
    case Kind::ChoiceList:
      return MakeChoiceList(*this, parent, control);
    case Kind::Label:
      return MakeLabel(*this, parent, control);
    case Kind::Button:
      return MakeButton(*this, parent, control, form_.default_button == &control);
    case Kind::OptionButton:
    case Kind::CheckBox:
      return MakeToggleButton(*this, parent, control);
    case Kind::Frame:
      return MakeFrame(*this, parent, control, nested);
    case Kind::Tabs:
      return std::make_unique<TabsPeer>(*this, parent, control);
    case Kind::ListView:
      return MakeListView(*this, parent, control);
    case Kind::StatusBar:
      return MakeStatusBar(*this, parent, control,
                           (GetWindowLongW(window_.handle(), GWL_STYLE) & WS_THICKFRAME) != 0);
    case Kind::WebView:
      return MakeWebView(*this, parent, control);
    case Kind::Picture:
      return MakePicture(*this, parent, control);
    case Kind::AnimationHost:
      return MakeAnimationHost(*this, parent, control);
  }
  return nullptr;
}

void ControlSet::Close() {
  closed_ = true;
  focus_.Stop();
  for (const auto& peer : peers_) peer->Detach();
}

NativePeer* ControlSet::PeerOf(const ui::Control& control) const {
  const auto found = by_control_.find(&control);
  return found == by_control_.end() ? nullptr : found->second;
}

ui::Extent ControlSet::PreferredSize(const ui::Control& control) const {
  return by_control_.at(&control)->PreferredSize();
}

ui::Insets ControlSet::FrameInsets(const ui::Control& frame, bool) const {
  ui::Insets insets = by_control_.at(&frame)->Insets();
  if (is_tight_) insets = {insets.left / 2, insets.top, insets.right / 2, insets.bottom / 2};
  return insets;
}

ui::Insets ControlSet::TabInsets(const ui::Control& tabs) const { return by_control_.at(&tabs)->Insets(); }

void ControlSet::Arrange(ui::Extent room) {
  room_ = room;
  if (fitting_bars_) return;  // showing or hiding a bar changes the client area
  fitting_bars_ = true;
  // A form that places its controls itself accepts any size.
  const bool placed = form_.layout().kind == ui::Box::Kind::Placed;
  bars_.Fit(window_.handle(), placed ? ui::Extent{} : Minimum(), room, theme().Scaled(12));
  fitting_bars_ = false;
  PlaceAll();
}

void ControlSet::PlaceAll() {
  RECT client;
  GetClientRect(window_.handle(), &client);
  const POINT scrolled = bars_.position();
  // A batch only moves children of one parent.
  std::map<const Surface*, HDWP> batches;
  const ui::Extent size{static_cast<int>(client.right), static_cast<int>(client.bottom)};
  for (const ui::Placement& placement : engine_->Arrange(size)) {
    NativePeer& peer = *by_control_.at(placement.control);
    ui::Rectangle place = placement.rectangle;
    place.left -= static_cast<int>(scrolled.x);
    place.top -= static_cast<int>(scrolled.y);
    const auto batch = batches.try_emplace(&peer.parent(), nullptr).first;
    if (!batch->second) batch->second = BeginDeferWindowPos(static_cast<int>(peers_.size()));
    peer.Place(place, batch->second);
  }
  for (const auto& [parent, batch] : batches) EndDeferWindowPos(batch);
  for (const auto& peer : peers_) {
    if (!peer->handle() || peer->control().ToolTip().empty()) continue;
    TTTOOLINFOW tool = PlaceTool(*peer);
    SendMessageW(tool_tips_, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
  }
}

void ControlSet::Scroll(int bar, WORD request) {
  if (bars_.Request(window_.handle(), bar, request)) PlaceAll();
}

void ControlSet::TurnWheel(int delta) {
  if (bars_.Turn(window_.handle(), delta)) PlaceAll();
}

void ControlSet::Reveal(const NativePeer& peer) {
  if (bars_.Reveal(window_.handle(), peer.place())) PlaceAll();
}

void ControlSet::Relayout() {
  if (!engine_ || closed_) return;
  const ui::Extent former = Minimum();
  MeasureLayout();
  const ui::Extent minimum = Minimum();
  const int wider = room_.width >= former.width ? std::max(0, minimum.width - room_.width) : 0;
  const int higher = room_.height >= former.height ? std::max(0, minimum.height - room_.height) : 0;
  RECT outer;
  GetWindowRect(window_.handle(), &outer);
  const int width = static_cast<int>(outer.right - outer.left),
            height = static_cast<int>(outer.bottom - outer.top);
  const ui::Extent most = WorkAreaAround(window_.handle());
  const int new_width = std::max(width, std::min(width + wider, most.width));
  const int new_height = std::max(height, std::min(height + higher, most.height));
  if ((new_width > width || new_height > height) && !IsIconic(window_.handle()) &&
      !IsZoomed(window_.handle()))
    SetWindowPos(window_.handle(), nullptr, 0, 0, new_width, new_height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  Arrange(room_);
}

void ControlSet::MakeToolTips() {
  if (tool_tips_) return;
  tool_tips_ =
      CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                      CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window_.handle(), nullptr,
                      ui_thread().instance(), nullptr);
  constexpr LPARAM kLongestShown = 32767;  // milliseconds
  SendMessageW(tool_tips_, TTM_SETDELAYTIME, TTDT_AUTOPOP, kLongestShown);
  FitToolTips();
}

void ControlSet::FitToolTips() const {
  SendMessageW(tool_tips_, WM_SETFONT, reinterpret_cast<WPARAM>(theme().Font()), FALSE);
  SendMessageW(tool_tips_, TTM_SETMAXTIPWIDTH, 0, theme().Scaled(360));
}

void ControlSet::ShowToolTip(NativePeer& peer) {
  MakeToolTips();
  std::wstring text = ToWide(peer.control().ToolTip());
  // One tool is the control, the other its place, because the mouse passes through a disabled control.
  for (TTTOOLINFOW tool : {ControlTool(peer), PlaceTool(peer)}) {
    tool.lpszText = text.data();
    SendMessageW(tool_tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    if (!text.empty()) SendMessageW(tool_tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  }
  ui_thread().accessible.SetDescription(peer.handle(), text);
}

void ControlSet::RelayToToolTips(MSG& message) const {
  SendMessageW(tool_tips_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&message));
}

void ControlSet::Selected(ui::OptionButton& option) {
  for (ui::OptionButton* const other : ui::OptionsAround(form_.layout(), option))
    if (other != &option) other->SetSelected(false);
}

}  // namespace windows
