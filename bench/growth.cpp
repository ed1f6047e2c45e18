#include "bench/growth.h"

#include "bench/full_router.h"
#include "bench/load.h"
#include "bench/process_status.h"
#include "bench/table.h"
#include "client/wifi_client.h"

#include <functional>
#include <memory>
#include <string>

namespace TALO::Bench {

namespace {

/// Where a heap is cut into pieces, another page or two may come into use late. Two of a hundred are some 150
/// KiB: more than a few pages, and reached where a change leaves 16 bytes behind.
constexpr double kGoal = 1.02;

/// Changes take no longer than the disk needs, and stations come back at once.
constexpr Environs kEnvirons = {.neighbours = 300,
                                .apply = std::chrono::milliseconds(0),
                                .bss = std::chrono::milliseconds(0),
                                .scan = std::chrono::milliseconds(0),
                                .join = std::chrono::milliseconds(0)};

/// Memory after all against memory after half: the first half brings in the pages that such calls need.
void CompareHalves(const EndToEnd::Process& daemon, std::size_t count, const std::string& of,
                   const std::function<void(std::size_t)>& half) {
  half(count / 2);
  const Memory before = ReadMemory(daemon);
  half(count / 2);
  const Memory after = ReadMemory(daemon);
  const std::string what = " after " + std::to_string(count) + " " + of;
  const std::string against = "after half of them";
  PrintComparison({"resident" + what, against, after.resident, before.resident, "KiB", AtMost(kGoal)});
  PrintComparison({"of it its own" + what, against, after.own, before.own, "KiB"});
}

void Ask(std::size_t questions) {
  MeasureLoad(RadioQuestion(), 8, questions * 9 / 10);
  MeasureLoad({.member = "GetDevices"}, 8, questions / 10);
}

/// Changes everything that a full router lets somebody change again and again.
class Changes {
 public:
  static constexpr std::size_t kOfRound = 10;

  Changes() : client_(Wifi::WifiClientFactory::GetInstance()) {
    profile_.name = "some stations";
    profile_.action = Wifi::MACFilterAction::Deny;
    profile_.id = client_->CreateMACFilterProfile(profile_, false);
    const auto networks = client_->GetNetworkSettings();
    network_ = networks.front();
  }

  void Make(std::size_t changes) {
    for (std::size_t i = 0; i < changes / kOfRound; ++i) {
      Round();
    }
    FullRouter::AwaitStations();
  }

 private:
  /// So many changes as kOfRound says. The stations of one network are dropped, refused, let in, and lose it
  /// with the network; each time they come back.
  void Round() {
    ++round_;
    ReplaceNetwork();
    client_->AssignMACFilterProfile(network_.id, profile_.id);
    profile_.devices = AddressesOf(network_);
    client_->ModifyMACFilterProfile(profile_);
    profile_.devices.clear();
    client_->ModifyMACFilterProfile(profile_);
    // Callers that come, change something and go, three at a time.
    MeasureLoad({.interface = "com.talo.Wifi1.Topology",
                 .member = "SetContext",
                 .fill =
                     [this](sd_bus_message* call, std::size_t nth) {
                       const std::string context = std::to_string(round_) + " " + std::to_string(nth);
                       Wifi::Bus::CheckMessage(sd_bus_message_append(call, "s", context.c_str()));
                     }},
                3, kOfRound - 5);
    if (round_ % 10 == 0) {
      client_->GetScanResults(Wifi::Util::RadioFrequency::SmartConnect);
    }
  }

  void ReplaceNetwork() {
    client_->DeleteNetwork(network_.id);
    network_.id = client_->CreateNetwork({network_.networkName, network_.ssid, FullRouter::kPassphrase});
  }

  std::vector<Wifi::MACFilterDevice> AddressesOf(const Wifi::NetworkSetting& network) {
    std::vector<Wifi::MACFilterDevice> devices;
    for (const Wifi::DeviceInfo& device : client_->GetDevices()) {
      if (device.networkId == network.id) {
        devices.push_back({device.name, device.address});
      }
    }
    return devices;
  }

  std::shared_ptr<Wifi::WifiClient> client_;
  Wifi::MACFilterProfile profile_;
  Wifi::NetworkSetting network_;
  std::size_t round_ = 0;
};

}  // namespace

void MeasureGrowth(const Effort& effort) {
  FullRouter router(kEnvirons);
  CompareHalves(router.Daemon(), effort.Or(1000, 1000000), "questions", Ask);
  Changes changes;
  CompareHalves(router.Daemon(), effort.Or(40, 20000), "changes",
                [&changes](std::size_t count) { changes.Make(count); });
}

}  // namespace TALO::Bench
