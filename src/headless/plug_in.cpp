#include "headless/plug_in.h"

#include <utility>
#include <vector>

namespace headless {

namespace {

/// Delivers events on the forms' thread, as the COM adapter does.
class HeardAtHome : public platform::LateBound {
 public:
  HeardAtHome(platform::LateBoundPtr inner, Desktop& desktop) : inner_(std::move(inner)), desktop_(desktop) {}

  platform::Value Invoke(const platform::Member& member, platform::CallKind kind,
                         platform::Arguments arguments) override {
    return inner_->Invoke(member, kind, arguments);
  }
  std::unique_ptr<platform::Subscription> Advise(platform::EventHandler handler) override {
    const auto heard = std::make_shared<platform::EventHandler>(std::move(handler));
    return inner_->Advise([&desktop = desktop_, heard](std::int32_t event, platform::Arguments arguments) {
      const std::vector<platform::Value> copied(arguments.begin(), arguments.end());
      desktop.RunAtHome([heard = std::weak_ptr(heard), event, copied] {
        if (const auto listener = heard.lock()) (*listener)(event, copied);
      });
    });
  }

 private:
  platform::LateBoundPtr inner_;
  Desktop& desktop_;
};

}  // namespace

platform::LateBoundPtr Computer::MakeObjectServer() {
  if (object_server_missing) throw platform::Error(429, "Headless", "Can't create object");
  platform::LateBoundPtr object_server =
      std::make_shared<HeardAtHome>(simulation->CreateObjectServer(), desktop);
  return in_between ? in_between(std::move(object_server)) : object_server;
}

PlugIn::PlugIn(std::shared_ptr<simulator::Simulation> network, platform::Program::Version version)
    : Computer(std::move(network), version), plugin::PlugIn({desktop, program, files, shell, machine, [this] {
                                                               return MakeObjectServer();
                                                             }}) {}

void PlugIn::InstallResourceFiles() {
  files.Write("C:\\LonWorks\\Types\\User\\Korvell\\QM5R.typ", "");
  files.Write("C:\\LonWorks\\Types\\User\\Korvell\\QM5R.fmt", "");
  files.Write("C:\\LonWorks\\Types\\ldrf.cat", "qm5r.typ qm5r.fmt");
  registry.SetMachineSetting("SOFTWARE\\LonWorks", "LonWorks Path", "C:\\LonWorks");
}

}  // namespace headless
