#include "daemon/service/service.h"

#include "bus/signals.h"

#include <string>
#include <utility>

namespace TALO::Wifid {

using Wifi::WifiClientForTool;
using Wifi::Util::LogLevel;

Service::Service(Parts parts)
    : parts_(std::move(parts)),
      general_(parts_.admit),
      mesh_(parts_.admit),
      topology_(parts_.admit),
      tool_(parts_.admit),
      logControl_(parts_.log) {
  Wifi::Bus::ForEachSignal([this](auto signal) { general_.Offer<decltype(signal)>(); });
  HandleNetworks();
  HandleRadios();
  HandleStations();
  HandleMACFilters();
  HandleSchedulesAndPasswords();
  HandleWPS();
  HandleCountry();
  HandleMesh();
  HandleTopology();
  HandleLogLevel();
}

void Service::Attach(sd_bus* bus) {
  general_.Attach(bus);
  mesh_.Attach(bus);
  topology_.Attach(bus);
  tool_.Attach(bus);
  logControl_.Attach(bus);
}

void Service::HandleLogLevel() {
  tool_.Handle<&WifiClientForTool::SetLogLevel>([this](LogLevel level, auto respond) {
    const auto severity = SeverityOf(level);
    if (!severity) {
      respond(Refusal{ErrorCode::InvalidArgument,
                      "the log level " + std::to_string(static_cast<int>(level)) + " does not exist"});
      return;
    }
    parts_.log.SetLevel(*severity);
    respond({});
  });
}

}  // namespace TALO::Wifid
