#include "sample.h"
#include "windows/com/adapter.h"
#include "windows/com/local_server.h"
#include "windows/com/registration.h"

using namespace windows::com;

int main(int count, char** words) try {
  const Apartment apartment;
  ServerRegistration registration{Sample::kClass, "Qm5r.ComSample", "Sample of the COM tests"};
  registration.switches = "/automation";
  registration.events = {{Sample::kEvents, "SampleEvents"}};
  std::string command_line;
  for (int i = 1; i < count; ++i) command_line += words[i] + std::string(" ");
  const ServerStart start = ServerStartOf(command_line);
  if (start == ServerStart::Register) RegisterServer(registration);
  if (start == ServerStart::Unregister) UnregisterServer(registration);
  if (start != ServerStart::ByCom) return 0;
  CreateMutexW(nullptr, FALSE, Sample::kServing);
  const bool impatient = command_line.ends_with("/impatient ");
  LocalServer server(
      {.id = Sample::kClass,
       .make = [] { return std::make_shared<Sample>(); },
       .open = [](const auto& object) { return DispatchAdapter::For(object, {.events = Sample::kEvents}); }},
      {.linger = std::chrono::milliseconds(100),
       .idle_limit = impatient ? std::chrono::milliseconds(100) : kIdleLimit});
  return server.Run();
} catch (const std::exception&) {
  return 1;
}
