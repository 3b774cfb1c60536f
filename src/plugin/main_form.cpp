#include "plugin/main_form.h"

#include <utility>

#include "platform/attempt.h"
#include "plugin/contact_page.h"
#include "plugin/display_settings.h"
#include "session/network_session.h"
#include "startup/help_topics.h"

namespace plugin {
namespace {

using platform::Attempt;

// A start-up stage marks a window that must not be used with this tag.
constexpr const char* kRefuseToStart = "Refuse to start";

}  // namespace

fMain::fMain(const Surroundings& surroundings)
    : Form(surroundings.desktop, "fMain", ui::BorderStyle::Sizable),
      with_(surroundings),
      pending_(cmdApply, cmdCancel),
      fields_(screen, surroundings.desktop, pending_),
      events_(surroundings.desktop, surroundings.log, loaded_) {
  SetCaption("Your Plug-In Caption Here");
  lblDeviceTemplate.weight = ui::Label::Weight::Heading;
  lblDeviceTemplate.shows_data = true;
  constexpr int kStateColumns = 24;
  StatusBar.columns = {kStateColumns};
  Picture1.SetAccessibleName("The thermostat");
  cmdHelp.picture = ui::Button::Picture::Help;
  cmdHelp.SetAccessibleName("Help");
  cmdHelp.SetToolTip("Help");
  cmdViewLog.picture = ui::Button::Picture::Log;
  cmdViewLog.SetAccessibleName("Activity log");
  cmdViewLog.SetToolTip("Activity log");
  cmdApply.SetToolTip("Writes the changed fields to the thermostat.");
  cmdCancel.SetToolTip("Puts the changed fields back to what the thermostat holds.");
  cmdRefresh.SetToolTip("Reads all values from the thermostat again. Changed fields keep their text.");
  cmdExit.SetToolTip("Ends the plug-in.");
  for (std::size_t i = 0; i < obUnits.size(); ++i) {
    const std::string caption = obUnits[i].Text().substr(1);  // behind its "&"
    obUnits[i].SetAccessibleName(frmUnits.Text() + ", " + caption);
    obUnits[i].SetToolTip("Shows temperatures in " + TemperatureUnit(static_cast<int>(i)) + ".");
  }
  cmdDebug.SetAccessibleName("Set up the screen");
  cmdDebug.SetToolTip("Sets the screen up for the model number beside it.");
  txtDebug.SetAccessibleName("Model number");
  txtDebug.SetToolTip("Model number for which the screen is to be set up.");
  cmdDebug.SetVisible(false);
  txtDebug.SetVisible(false);
  cmdExit.on_click = [this] { ConfirmExit(); };
  cmdHelp.on_click = [this] { OnHelp(); };
  cmdViewLog.on_click = [this] { with_.log.BringToFront(); };
  for (ui::OptionButton& unit : obUnits) unit.help_context = startup::kUnitsTopic;
  cmdApply.help_context = startup::kApplyTopic;
  cmdCancel.help_context = startup::kCancelTopic;
  cmdRefresh.help_context = startup::kRefreshTopic;
  cmdExit.help_context = startup::kExitTopic;
  cmdViewLog.help_context = startup::kLogTopic;
  ConnectEditing();
  SetLayout(MakeLayout());
}

ui::Box fMain::MakeLayout() {
  using ui::Box;
  Box labels =
      Box::Column(
          {Box::Leaf(lblDeviceTemplate).StretchWidth(),
           Box::Row({Box::Leaf(screen.lbModel).StretchWidth(), Box::Leaf(screen.lbHvacType).StretchWidth()})
               .StretchWidth()})
          .StretchWidth();
  Box heading = Box::Row({std::move(labels), Box::Leaf(Picture1)}).StretchWidth();
  Box units = Box::Framed(frmUnits, Box::Row({Box::Leaf(obUnits[0]), Box::Leaf(obUnits[1])}));
  Box buttons = Box::Row({std::move(units), Box::Leaf(txtDebug), Box::Leaf(cmdDebug), Box{}.StretchWidth(),
                          Box::Leaf(cmdApply), Box::Leaf(cmdCancel), Box::Leaf(cmdRefresh),
                          Box::Leaf(cmdExit), Box::Leaf(cmdViewLog), Box::Leaf(cmdHelp)})
                    .StretchWidth();
  return Box::Column(
             {std::move(heading), screen.Layout(), std::move(buttons), Box::Leaf(StatusBar).StretchWidth()})
      .Stretch();
}

void fMain::OnLoad() {
  ending_ = false;
  DropDevice();
  SetCaption(with_.identity.PlugInName);
  const auto version = with_.program.FileVersion();
  screen.txtMajorVersion.SetText(std::to_string(version.major));
  screen.txtMinorVersion.SetText(std::to_string(version.minor));
  GetDisplayUnits();
  GetDebug();
  screen.WebBrowser1.SetText(ContactPageText());
  screen.WebBrowser1.url = ContactPageAddress(with_.program);
  resource_files_ = ResourceFiles(with_.registry, with_.program);
  Attempt([this] { lcaOS(); });
}

lns::ObjectServer fMain::lcaOS() {
  if (object_server_ && object_server_.IsLost()) ReleaseObjectServer();
  if (!object_server_) TakeObjectServer(lns::ObjectServer(with_.make_object_server()));
  return object_server_;
}

void fMain::TakeObjectServer(const lns::ObjectServer& made) {
  // Another director may have come in while it was made, and have made one as well.
  if (object_server_) return;
  object_server_ = made;
  // Without events everything works, only less lively.
  Attempt([this] {
    subscription_ = object_server_.Advise(
        [this](std::int32_t event, platform::Arguments arguments) { events_.Handle(event, arguments); });
  });
}

void fMain::GetDisplayUnits() {
  with_.session.DisplayUnits = StoredDisplayUnits(with_.registry, with_.identity.PlugInKey());
  ShowUnits();
}

void fMain::GetDebug() {
  with_.session.DebugMode = StoredDebugMode(with_.registry, with_.identity.PlugInKey());
}

void fMain::OnActivate() {
  if (Tag() != kRefuseToStart) return;
  EndPlugIn();
}

bool fMain::OnQueryUnload(ui::CloseReason reason) {
  if (reason != ui::CloseReason::User) return true;
  if (with_.session.Busy()) return false;
  ConfirmExit();
  return false;
}

void fMain::ConfirmExit() {
  if (with_.session.Busy()) return;
  if (with_.session.InstanceCount == 0) return EndPlugIn();
  const ui::Answer answer =
      desktop().ShowMessage({"Are you sure that you want to exit?", with_.identity.PlugInName,
                             ui::Icon::Question, ui::Buttons::YesNo, /*second_is_default=*/true});
  if (answer != ui::Answer::Yes) return;
  Attempt(
      [this] { StoreDisplayUnits(with_.registry, with_.identity.PlugInKey(), with_.session.DisplayUnits); });
  EndPlugIn();
}

void fMain::OnUnload() {
  with_.log.Unload();
  with_.progress.Close();
  // A window that closes by itself ends the plug-in just the same.
  EndPlugIn();
}

void fMain::EndPlugIn() {
  if (ending_) return;
  ending_ = true;
  // Calls come in during everything that follows, also while objects are let go.
  const bool unused = with_.session.InstanceCount == 0;
  current_object_ = {};
  current_device_ = {};
  current_interface_ = {};
  AbandonOperation();
  loaded_ = std::make_shared<editing::LoadedDevice>();
  ReleaseObjectServer();
  // A director that came in is served.
  if (unused && with_.session.InstanceCount != 0) {
    ending_ = false;
    return;
  }
  Attempt([this] { Unload(); });
  desktop().EndProgram();
}

void fMain::ReleaseObjectServer() {
  const lns::ObjectServer server = std::exchange(object_server_, {});
  const std::unique_ptr<platform::Subscription> subscription = std::exchange(subscription_, nullptr);
  session::CloseSession(with_.session);
}

void fMain::AbandonOperation() {
  loaded_->dropped = true;
  complete_read_ = false;
}

void fMain::EndIfUnused() {
  const session::Session& session = with_.session;
  if (!Visible() && session.InstanceCount == 0 && !session.Busy()) EndPlugIn();
}

int fMain::HelpContext() const {
  const ui::Control* asked_about = ActiveControl() == &cmdHelp ? FormerControl() : ActiveControl();
  if (asked_about && asked_about->help_context != 0) return asked_about->help_context;
  return model::kPageTopics[screen.tabData.Selected()];
}

void fMain::OnHelp() { ShowHelp(startup::HelpFile(with_.program), HelpContext(), startup::kProgramTitle); }

editing::Passes fMain::passes() {
  return {desktop(), with_.log, with_.progress, with_.identity.PlugInName, loaded_};
}

}  // namespace plugin
