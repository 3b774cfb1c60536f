#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <string>

#include "headless/plug_in.h"
#include "ui/keyboard.h"

namespace headless {

/// A user at the main window of a plug-in, who moves the focus, types, and presses keys and buttons. Events
/// arrive in the same order as in a real window.
class User {
 public:
  explicit User(PlugIn& plug_in) : plug_in_(plug_in), focus_(plug_in.main, [](ui::Control&) {}) {
    for (int i = 0; i < model::ConfigurationScreen::kTextFieldCount; ++i)
      if (ui::Control* field = plug_in.main.screen.txtNvi(i)) Attach(*field);
    for (int i = 0; i < model::kChoiceListCount; ++i) Attach(*plug_in.main.screen.cbNvi(i));
    Attach(plug_in.main.cmdRefresh);
  }
  ~User() {
    for (const auto& [control, peer] : peers_) control->Attach(nullptr);
  }

  ui::TextField& Field(int index) { return *plug_in_.main.screen.txtNvi(index); }
  ui::ChoiceList& List(int index) { return *plug_in_.main.screen.cbNvi(index); }

  void GoTo(ui::Control& control) {
    focus_.LeaveFor(control, [&] { focus_.Arrived(control); });
  }

  /// Goes to the field, which selects its text, and types over it.
  void Type(int index, const std::string& text) {
    ui::TextField& field = Field(index);
    GoTo(field);
    std::string entered;
    for (const char c : text) {
      if (!field.on_key_press(static_cast<unsigned char>(c))) continue;
      const bool full = field.most_typed > 0 && entered.size() >= static_cast<std::size_t>(field.most_typed);
      if (c == '')
        entered.resize(entered.empty() ? 0 : entered.size() - 1);
      else if (!full)
        entered += c;
      field.UserChangesText(entered);
    }
  }

  /// Pastes at the end of the text.
  void Paste(int index, const std::string& text) {
    ui::TextField& field = Field(index);
    GoTo(field);
    std::string accepted;
    for (const char c : text)
      if (c >= ' ' && field.on_key_press(static_cast<unsigned char>(c))) accepted += c;
    std::string text_now = field.Text() + accepted;
    if (field.most_typed > 0)
      text_now.resize(std::min(text_now.size(),
                               std::max(field.Text().size(), static_cast<std::size_t>(field.most_typed))));
    if (text_now != field.Text()) field.UserChangesText(text_now);
  }
  /// Presses a key that enters no character, such as Page Up.
  void Key(ui::Field& field, int key, int state = 0) {
    GoTo(field);
    field.on_key_down(key, state);
  }

  /// Types, then goes to a list, which has no rules.
  void Enter(int index, const std::string& text) {
    Type(index, text);
    GoTo(List(0));
  }

  void Choose(int index, const std::string& item) {
    GoTo(List(index));
    List(index).on_drop_down();
    List(index).UserChooses(item);
  }

  /// Chooses the menu item that resets the field.
  void PutBack(ui::Field& field) {
    GoTo(field);
    field.UserPutsBack();
  }

  /// If leaving the field shows a message, does not press the button.
  void Press(ui::Button& button) {
    const std::size_t messages = plug_in_.desktop.messages.size();
    GoTo(button);
    if (plug_in_.desktop.messages.size() == messages) button.UserClicks();
  }

  ui::Control* Focused() const { return focus_.current(); }
  static bool IsMarked(const ui::Control& control) { return control.ForeColor() == ui::Color::ModifiedMark; }

 private:
  struct Peer : ui::ControlPeer {
    Peer(ui::FocusTracker& tracker, ui::Control& shown) : focus(tracker), control(shown) {}
    void Update(ui::Aspect) override {}
    void TakeFocus() override { focus.Arrived(control); }
    ui::FocusTracker& focus;
    ui::Control& control;
  };
  void Attach(ui::Control& control) {
    peers_[&control] = std::make_unique<Peer>(focus_, control);
    control.Attach(peers_[&control].get());
  }

  PlugIn& plug_in_;
  ui::FocusTracker focus_;
  std::map<ui::Control*, std::unique_ptr<Peer>> peers_;
};

}  // namespace headless
