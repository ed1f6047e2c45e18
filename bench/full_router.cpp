#include "bench/full_router.h"

#include "client/wifi_client.h"
#include "support/deadline.h"
#include "support/files.h"

#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <thread>

namespace TALO::Bench {

namespace {

std::string SSID(int network) { return "Network " + std::to_string(network); }

/// Stations that know one of the networks each.
std::string Scenario() {
  std::string text = "{ \"devices\": [";
  for (int i = 0; i < FullRouter::kStations; ++i) {
    char address[sizeof "00:00:00:00:00:00"];
    std::snprintf(address, sizeof address, "0a:00:00:00:00:%02x", static_cast<unsigned>(i));
    text += std::string(i == 0 ? "" : ",") + "{\"address\": \"" + address + "\", \"name\": \"device " +
            std::to_string(i) + "\", \"ipAddress\": \"192.168.1.11\", \"knows\": [{\"ssid\": \"" +
            SSID(i % FullRouter::kNetworks) + "\", \"passphrase\": \"correct-horse\"}]}";
  }
  return text + "] }";
}

std::string WrittenScenario(const std::string& path) {
  WriteFile(path, Scenario());
  return path;
}

}  // namespace

FullRouter::FullRouter()
    : router_({"--log-level", "Warning", "--scenario", WrittenScenario(directory_ / "scenario.json")}) {
  const auto client = Wifi::WifiClientFactory::GetInstance();
  for (int i = 0; i < kNetworks; ++i) {
    client->CreateNetwork({SSID(i), SSID(i), "correct-horse"});
  }
  const EndToEnd::Deadline deadline;
  while (client->GetDevices().size() < kStations) {
    if (deadline.HasPassed()) {
      throw std::runtime_error("not all stations connect");
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

}  // namespace TALO::Bench
