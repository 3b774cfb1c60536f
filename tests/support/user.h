#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/world.h"
#include "ui/focus.h"

/// A user at the main window of a world: moves the focus, types, presses keys and buttons, in the order of
/// events of a real window.
class User {
 public:
  explicit User(World& world) : world_(world), focus_(world.main, [](ui::Control&) {}) {
    for (int i = 0; i < model::ConfigurationScreen::kTextFieldCount; ++i)
      if (ui::Control* field = world.main.screen.txtNvi(i)) Attach(*field);
    for (int i = 0; i < model::kChoiceListCount; ++i) Attach(*world.main.screen.cbNvi(i));
  }
  ~User() {
    for (const auto& [control, peer] : peers_) control->Attach(nullptr);
  }

  ui::TextField& Field(int index) { return *world_.main.screen.txtNvi(index); }
  ui::ChoiceList& List(int index) { return *world_.main.screen.cbNvi(index); }

  void GoTo(ui::Control& control) {
    focus_.LeaveFor(control, [&] { focus_.Arrived(control); });
  }

  /// Goes to the field, whose text is selected then, and types over it.
  void Type(int index, const std::string& text) {
    ui::TextField& field = Field(index);
    GoTo(field);
    std::string entered;
    for (const char c : text) {
      if (!field.on_key_press(static_cast<unsigned char>(c))) continue;
      entered += c;
      field.UserChangesText(entered);
    }
  }

  /// Types and goes on to a list, which has no rule of its own.
  void Enter(int index, const std::string& text) {
    Type(index, text);
    GoTo(List(0));
  }

  void Choose(int index, const std::string& item) {
    GoTo(List(index));
    List(index).on_drop_down();
    List(index).UserChooses(item);
  }

  /// A press that brings up a message does not press the button as well.
  void Press(ui::Button& button) {
    const std::size_t messages = world_.desktop.messages.size();
    GoTo(button);
    if (world_.desktop.messages.size() == messages) button.UserClicks();
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

  World& world_;
  ui::FocusTracker focus_;
  std::map<ui::Control*, std::unique_ptr<Peer>> peers_;
};

/// A user in front of a device that a director has sent.
struct Opened : World, User {
  explicit Opened(const std::string& path = kFirstThermostat, const char* units = "0")
      : User(static_cast<World&>(*this)) {
    registry.SetMachineSetting(identity.PlugInKey(), "DisplayUnits", units);
    api = Configure(path);
    simulation->journal().Clear();
  }
  void Apply() { Press(main.cmdApply); }

  /// "nciSetPts Value=<text>" for every try to write a value, in order.
  std::vector<std::string> Writes() const { return Operations(" Value="); }
  /// The bytes of a variable of the device.
  std::string Raw(const char* variable) {
    const auto found = main.CurrentDevice().Interface().NetworkVariables().Item(variable);
    const std::string format = found.FormatType();
    found.SetFormatType("RAW_HEX_PACKED");
    const std::string raw = found.Value();
    found.SetFormatType(format);
    return raw;
  }

  std::shared_ptr<plugin::LNSPlugInAPI> api;
};
