#include "support/daemon_run.h"

#include "daemon/main/stored_state.h"
#include "support/admit_all.h"

#include <variant>

namespace TALO::Wifid {

DaemonRun::DaemonRun(World& world)
    : world_(world),
      driver_(SupportedModel::Cedar300, world.scenario, world.timers),
      directory_(world.directory / "state"),
      store_(directory_, world.directory / "state"),
      engine_({writer_, driver_, world.clock, world.calendar, announcer_, log_},
              LoadState(store_, driver_.GetCapabilities(), CountryCode::DE, log_)),
      schedules_(engine_, world.timers),
      service_({engine_, wps_, schedules_, random_, log_, "br0", AdmitAll}) {
  driver_.SetEventSink([this](const RadioEvent& event) {
    if (const auto* finished = std::get_if<WPSFinished>(&event)) {
      wps_.Finished(*finished);
    }
    announcer_.Happened(event);
  });
  announcer_.Attach(pair_.Server());
  service_.Attach(pair_.Server());
  bool started = false;
  engine_.Start([&] {
    schedules_.Rearm();
    started = true;
  });
  while (!started && world_.timers.RunNext()) {
  }
  EXPECT_TRUE(started);
}

sd_bus_message* DaemonRun::Settle(std::uint64_t cookie) {
  pair_.RunUntilQuiet();
  while (pair_.CountAnswers(cookie) == 0 && world_.timers.RunNext()) {
    pair_.RunUntilQuiet();
  }
  return pair_.WaitForAnswer(cookie);
}

void DaemonRun::CreateHome() {
  const Wifi::NetworkCreateInfo home{"Home", "Home", "correct-horse"};
  EXPECT_EQ(ErrorOfCall<&Wifi::WifiClient::CreateNetwork>(home), "none");
}

std::string DaemonRun::InterfacesUp() {
  std::string up;
  for (const auto& radio : Value<&Wifi::WifiClient::GetRadioIfStatuses>()) {
    for (const std::string& interface : radio.enabledInterfaces) {
      up += interface + " ";
    }
  }
  return up;
}

std::vector<std::string> DaemonRun::FinishedWPS() {
  pair_.RunUntilQuiet();
  std::vector<std::string> finished;
  for (sd_bus_message* signal : pair_.Signals()) {
    if (sd_bus_message_is_signal(signal, nullptr, "WPSFinished") > 0) {
      const char* interface = nullptr;
      const char* outcome = nullptr;
      Wifi::Bus::CheckMessage(sd_bus_message_rewind(signal, 1));
      Wifi::Bus::CheckMessage(sd_bus_message_read(signal, "ss", &interface, &outcome));
      finished.push_back(std::string(interface) + " " + outcome);
    }
  }
  return finished;
}

}  // namespace TALO::Wifid
