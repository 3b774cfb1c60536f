#include "plugin/main_form.h"

#include <utility>

#include "platform/error.h"
#include "session/session.h"
#include "startup/identity.h"
#include "text/numbers.h"

namespace plugin {
namespace {

using platform::IgnoreFailure;

// The tag of a window that start-up has marked as unusable.
constexpr const char* kRefuseToStart = "Refuse to start";
constexpr const char* kDisplayUnits = "DisplayUnits";
constexpr const char* kSettings = "Settings";  // of the user

/// The contact page, about.htm, as lines of plain text.
const char* ContactPageText() {
  return
#include "contact_page_text.inc"
      ;
}

}  // namespace

fMain::fMain(const session::Services& services)
    : Form(services.desktop, "fMain", ui::BorderStyle::Sizable),
      services_(services),
      pending_(screen, cmdApply, cmdCancel),
      editing_context_{services.desktop,
                       services.log,
                       services.progress,
                       services.identity.PlugInName,
                       screen,
                       pending_,
                       services.session.Dialect,
                       DisplayUnits,
                       cmdRefresh,
                       [this] { ShowUnits(); },
                       [this] { ShowDevice(); },
                       [this] { return Visible(); },
                       [this](int model_number) { SetUpScreen(model_number); },
                       [this] { return object_server_ && object_server_.IsLost(); },
                       [this] { ReadAgain(); },
                       [this] { HideModal(); }},
      fields_(
          screen, pending_, device_, [this] { Apply(); }, [this] { return Busy(); }),
      settings_menu_(services, {*this, fields_, pending_, DisplayUnits,
                                [this](const std::string& action, const auto& pass) { Run(action, pass); },
                                [this] { return exit_wanted_; }}),
      events_(services.desktop, device_) {
  Open({}, {}, {});
  pending_.on_change = [this] { ShowDevice(); };
  services_.progress.on_escape = [this] { return OnEscape(); };
  services_.session.network_closes = [this] { device_->Close(); };
  SetCaption("Your Plug-In Caption Here");
  lblDeviceTemplate.weight = ui::Label::Weight::Heading;
  lblDeviceTemplate.shows_data = true;
  lblDeviceTemplate.lines = 2;
  // Enough for every state and for every step; the path can be of any length.
  constexpr int kStateColumns = 22, kPathColumns = 0, kStepColumns = 35;
  StatusBar.columns = {kStateColumns, kPathColumns, kStepColumns};
  Picture1.SetAccessibleName("The thermostat");
  cmdHelp.picture = ui::Button::Picture::Help;
  cmdHelp.SetAccessibleName("Help");
  cmdHelp.SetToolTip("Help");
  cmdViewLog.picture = ui::Button::Picture::Log;
  cmdViewLog.SetAccessibleName("Activity log");
  cmdViewLog.SetToolTip("Activity log");
  cmdSettings.picture = ui::Button::Picture::Settings;
  cmdSettings.SetAccessibleName("Settings file");
  cmdSettings.SetToolTip("Settings file");
  cmdApply.SetToolTip("Writes the changed fields to the thermostat.");
  cmdCancel.SetToolTip("Resets the changed fields to the values of the thermostat.");
  cmdRefresh.SetToolTip("Reads all values from the thermostat again. Changed fields keep their text.");
  cmdExit.SetToolTip("Ends the plug-in.");
  for (std::size_t i = 0; i < obUnits.size(); ++i) {
    const std::string caption = obUnits[i].Text().substr(1);  // without "&"
    obUnits[i].SetAccessibleName(frmUnits.Text() + ", " + caption);
    obUnits[i].SetToolTip("Shows temperatures in " + model::TemperatureUnit(static_cast<int>(i)) + ".");
  }
  cmdDebug.SetAccessibleName("Set up the screen");
  cmdDebug.SetToolTip("Sets the screen up for the model number beside it.");
  txtDebug.SetAccessibleName("Model number");
  txtDebug.SetToolTip("Model number to set the screen up for.");
  cmdDebug.SetVisible(false);
  txtDebug.SetVisible(false);
  cmdExit.on_click = [this] { ConfirmExit(); };
  cmdHelp.on_click = [this] { OnHelp(); };
  cmdSettings.on_click = [this] { settings_menu_.Show(cmdSettings); };
  cmdViewLog.on_click = [this] { services_.log.BringToFront(); };
  for (ui::OptionButton& unit : obUnits) unit.help_context = startup::kUnitsTopic;
  cmdApply.help_context = startup::kApplyTopic;
  cmdCancel.help_context = startup::kCancelTopic;
  cmdRefresh.help_context = startup::kRefreshTopic;
  cmdExit.help_context = startup::kExitTopic;
  cmdViewLog.help_context = startup::kLogTopic;
  cmdSettings.help_context = startup::kSettingsTopic;
  ConnectEditing();
  SetLayout(MakeLayout());
}

ui::Box fMain::MakeLayout() {
  using ui::Box;
  Box labels =
      Box::Column({Box::Leaf(lblDeviceTemplate).StretchWidth(),
                   Box::Row({Box::Leaf(lblModelCaption), Box::Leaf(screen.lbModel),
                             Box::Leaf(lblHvacTypeCaption), Box::Leaf(screen.lbHvacType).StretchWidth()})
                       .StretchWidth()})
          .StretchWidth();
  Box heading = Box::Row({std::move(labels), Box::Leaf(Picture1)}).StretchWidth();
  Box units = Box::Framed(frmUnits, Box::Row({Box::Leaf(obUnits[0]), Box::Leaf(obUnits[1])}));
  Box buttons =
      Box::Row({std::move(units), Box::Leaf(txtDebug), Box::Leaf(cmdDebug), Box{}.StretchWidth(),
                Box::Leaf(cmdApply), Box::Leaf(cmdCancel), Box::Leaf(cmdRefresh), Box::Leaf(cmdExit),
                Box::Leaf(cmdSettings), Box::Leaf(cmdViewLog), Box::Leaf(cmdHelp)})
          .StretchWidth();
  return Box::Column(
             {std::move(heading), screen.Layout(), std::move(buttons), Box::Leaf(StatusBar).StretchWidth()})
      .Stretch();
}

void fMain::OnLoad() {
  ending_ = Ending::No;
  exit_wanted_ = false;
  Open({}, {}, {});
  SetCaption(services_.identity.PlugInName);
  const auto version = services_.program.FileVersion();
  screen.txtMajorVersion.SetText(std::to_string(version.major));
  screen.txtMinorVersion.SetText(std::to_string(version.minor));
  GetDisplayUnits();
  GetDebug();
  screen.WebBrowser1.SetText(ContactPageText());
  screen.WebBrowser1.url = "res://" + services_.program.Path() + "/about.htm";
  resource_files_ = lonworks::ResourceFiles(services_.registry, services_.program);
  IgnoreFailure([this] { lcaOS(); });
}

lns::ObjectServer fMain::lcaOS() {
  if (object_server_ && object_server_.IsLost()) ReleaseObjectServer();
  if (!object_server_ && ending_ != Ending::ForGood)
    TakeObjectServer(lns::ObjectServer(services_.make_object_server()));
  return object_server_;
}

void fMain::TakeObjectServer(const lns::ObjectServer& made) {
  // Meanwhile another director may have created one, or the program may have ended.
  if (object_server_ || ending_ == Ending::ForGood) return;
  object_server_ = made;
  services_.session.Dialect = std::make_shared<lns::Dialect>(resource_files_.UserTypeOwner());
  // Events are optional.
  activity::LogAndGoOn(services_.log, "Error subscribing to events", "Object Server", [this] {
    subscription_ = object_server_.Advise(
        [this](std::int32_t event, platform::Arguments arguments) { events_.Handle(event, arguments); });
  });
}

void fMain::GetDisplayUnits() {
  DisplayUnits =
      services_.registry.Remembered(services_.identity.PlugInKey(), kSettings, kDisplayUnits) == "0" ? 0 : 1;
  ShowUnits();
}

void fMain::SetDisplayUnits() {
  services_.registry.Remember(services_.identity.PlugInKey(), kSettings, kDisplayUnits,
                              std::to_string(DisplayUnits));
}

void fMain::GetDebug() {
  const std::string stored = services_.registry.MachineSetting(services_.identity.PlugInKey(), "Debug");
  DebugMode = text::LeadingWholeNumber(stored) == 1 ? 1 : 0;
}

void fMain::OnActivate() {
  if (Tag() != kRefuseToStart) return;
  EndPlugIn();
}

bool fMain::OnQueryUnload(ui::CloseReason reason) {
  if (reason == ui::CloseReason::Code) return true;
  if (reason == ui::CloseReason::User)
    ConfirmExit();
  else
    EndSoon();
  return false;
}

/// Asks at once, even during an operation, which then ends at its next step and ends the program.
void fMain::ConfirmExit() {
  if (services_.session.InstanceCount != 0) {
    const ui::Answer answer =
        desktop().ShowMessage({"Are you sure that you want to exit?", services_.identity.PlugInName,
                               ui::Icon::Question, ui::Buttons::YesNo, /*second_is_default=*/true});
    if (answer != ui::Answer::Yes) return;
    IgnoreFailure([this] { SetDisplayUnits(); });
  }
  EndSoon();
}

void fMain::EndSoon() {
  exit_wanted_ = true;
  if (Busy()) device_->Close();
  EndIfWanted();
}

void fMain::OnUnload() {
  services_.log.Unload();
  services_.progress.Close();
  EndPlugIn();
}

void fMain::EndPlugIn() {
  if (ending_ != Ending::No) return;
  // Calls may arrive during all that follows, even while objects are released.
  ending_ = services_.session.InstanceCount == 0 ? Ending::Unused : Ending::ForGood;
  // A director that connected and disconnected meanwhile leaves its network open.
  do {
    device_->Close();
    Open({}, {}, {});
    ReleaseObjectServer();
  } while (object_server_ && services_.session.InstanceCount == 0);
  // A director that stays connected is served.
  if (ending_ == Ending::Unused && services_.session.InstanceCount != 0) {
    ending_ = Ending::No;
    exit_wanted_ = false;
    return;
  }
  ending_ = Ending::ForGood;
  IgnoreFailure([this] { Unload(); });
  desktop().EndProgram();
}

void fMain::ReleaseObjectServer() {
  const lns::ObjectServer server = std::exchange(object_server_, {});
  const std::unique_ptr<platform::Subscription> subscription = std::exchange(subscription_, nullptr);
  session::CloseSession(services_.session);
}

void fMain::EndIfWanted() {
  const bool unused = !Visible() && services_.session.InstanceCount == 0;
  if (!Busy() && (exit_wanted_ || unused)) EndPlugIn();
}

int fMain::HelpContext() const {
  const ui::Control* asked_about = ActiveControl() == &cmdHelp ? FormerControl() : ActiveControl();
  if (asked_about && asked_about->help_context != 0) return asked_about->help_context;
  return model::kPageTopics[screen.tabData.Selected()];
}

void fMain::OnHelp() {
  ShowHelp(startup::HelpFile(services_.program), HelpContext(), startup::kProgramTitle);
}

}  // namespace plugin
