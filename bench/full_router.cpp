#include "bench/full_router.h"

#include "client/wifi_client.h"
#include "support/deadline.h"
#include "support/files.h"
#include "values/errors.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <thread>

namespace TALO::Bench {

namespace {

std::string Address(const char* begin, int number) {
  char address[sizeof "00:00:00:00:00:00"];
  std::snprintf(address, sizeof address, "%s:%02x:%02x", begin, static_cast<unsigned>(number) >> 8 & 0xff,
                static_cast<unsigned>(number) & 0xff);
  return address;
}

std::string List(int count, const std::function<std::string(int)>& element) {
  std::string text = "[";
  for (int i = 0; i < count; ++i) {
    text += (i == 0 ? "" : ",") + element(i);
  }
  return text + "]";
}

/// Every third on a channel of each radio.
std::string Neighbour(int number) {
  constexpr std::array<int, 9> kChannels = {1, 36, 100, 6, 44, 108, 11, 48, 132};
  return R"({"ssid": "Neighbour )" + std::to_string(number) + R"(", "bssid": ")" +
         Address("06:40:00:00", number) + R"(", "channel": )" +
         std::to_string(kChannels[static_cast<std::size_t>(number) % kChannels.size()]) + R"(, "signal": -)" +
         std::to_string(50 + number % 45) + R"(, "passphrase": "secret-of-theirs"})";
}

/// A station that knows one of the networks.
std::string Station(int number) {
  return R"({"address": ")" + Address("0a:00:00:00", number) + R"(", "name": "device )" +
         std::to_string(number) + R"(", "ipAddress": "192.168.1.11", "knows": [{"ssid": ")" +
         FullRouter::SSID(number % FullRouter::kNetworks) + R"(", "passphrase": ")" +
         FullRouter::kPassphrase + R"("}]})";
}

std::string Timing(const char* name, std::chrono::milliseconds time) {
  return std::string("\"") + name + "Milliseconds\": " + std::to_string(time.count());
}

std::string WrittenScenario(const std::string& path, const Environs& environs) {
  WriteFile(path, R"({"neighbours": )" + List(environs.neighbours, Neighbour) + R"(, "devices": )" +
                      List(FullRouter::kStations, Station) + R"(, "timings": {)" +
                      Timing("apply", environs.apply) + "," + Timing("bss", environs.bss) + "," +
                      Timing("scan", environs.scan) + "," + Timing("join", environs.join) + "}}");
  return path;
}

/// The connection that all clients share may be one to the bus of a router before, which only a call notices.
void ForgetBusBefore() {
  try {
    Wifi::WifiClientFactory::GetInstance()->GetRadioIfStatuses();
  } catch (const talo::dbus::DbusError&) {
    return;
  }
}

}  // namespace

FullRouter::FullRouter(const Environs& environs)
    : router_(
          {"--log-level", "Warning", "--scenario", WrittenScenario(directory_ / "scenario.json", environs)}) {
  ForgetBusBefore();
  const auto client = Wifi::WifiClientFactory::GetInstance();
  for (int i = 0; i < kNetworks; ++i) {
    client->CreateNetwork({SSID(i), SSID(i), kPassphrase});
  }
  AwaitStations();
}

void FullRouter::AwaitStations(std::size_t count) {
  const auto client = Wifi::WifiClientFactory::GetInstance();
  const EndToEnd::Deadline deadline;
  while (client->GetDevices().size() != count) {
    if (deadline.HasPassed()) {
      throw std::runtime_error("not as many stations connect as are there");
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

}  // namespace TALO::Bench
