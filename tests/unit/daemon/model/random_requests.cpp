#include "unit/daemon/model/random_requests.h"

#include "daemon/model/country.h"
#include "daemon/model/mac_filter.h"
#include "daemon/model/mesh.h"
#include "daemon/model/networks.h"
#include "daemon/model/passwords.h"
#include "daemon/model/schedules.h"
#include "daemon/model/stations.h"
#include "daemon/model/topology.h"

namespace TALO::Wifid {

namespace {

using Wifi::MACFilterAction;
using Wifi::Util::MACAddress;

template <typename Answer>
Result<State> StateOf(const Result<Change<Answer>>& result) {
  if (result.Succeeded()) {
    return result.Value().state;
  }
  return result.Why();
}

bool Flip(Random& random) { return random.OneIn(2); }

/// Few, so that two often meet; the bad ones are empty, too long, or hold what must not reach a line of text.
std::string SSID(Random& random) {
  return random.OneOf<std::string>({"one", "two", "three", "four", "five", "six", "mesh", "ONE", "a\nb",
                                    std::string(32, '\xFF'), "", std::string(33, 's')});
}

std::string Passphrase(Random& random) {
  const std::string secret = kSecret;
  return random.OneOf<std::string>(
      {secret, secret + " more", secret + "!", "", secret + "\n", std::string(60, 'x') + secret});
}

int NetworkId(const State& state, Random& random) { return random.Below(state.nextNetworkId + 2) - 1; }

/// -1 among them.
int ProfileId(const State& state, Random& random) {
  return random.Below(state.nextMACFilterProfileId + 2) - 1;
}

RadioFrequency Radio(Random& random) {
  return RadioFrequency{random.OneOf<int>({-2, -1, 0, 1, 1, 2, 3, 4, 5})};
}

std::vector<Wifi::MACFilterDevice> FilterDevices(Random& random) {
  std::vector<Wifi::MACFilterDevice> devices;
  for (int count = random.Below(4); count > 0; --count) {
    devices.push_back({"device", MACAddress("aa:bb:cc:dd:ee:0" + std::to_string(random.Below(8)))});
  }
  return devices;
}

// Function arguments are evaluated in any order, members between braces from the first to the last: whatever
// picks twice does so between braces or in statements of its own.
Wifi::MACFilterProfile Profile(int id, Random& random) {
  return {id, random.OneOf<std::string>({"Guests", "Family", "Night", "", std::string(65, 'n')}),
          MACFilterAction{random.OneOf<int>({0, 1, 0, 1, -1, 2})}, FilterDevices(random)};
}

Wifi::StationSetting Station(Random& random) {
  return {Flip(random),
          SSID(random),
          random.OneOf<std::string>({"", "", "user"}),
          Passphrase(random),
          random.OneOf<MACAddress>(
              {MACAddress(), MACAddress("aa:bb:cc:dd:ee:ff"), MACAddress("ff:ff:ff:ff:ff:ff")}),
          SecurityMode{random.OneOf<int>({-1, 0, 1, 2, 4, 4, 5, 5, 7, 7, 9, 12})},
          Radio(random)};
}

Wifi::NetworkSchedule Schedule(const State& state, Random& random) {
  Wifi::NetworkSchedule schedule{
      NetworkId(state, random), Radio(random), ScheduleMode{random.OneOf<int>({0, 1, 0, 1, -1, 2})}, 0, {}};
  if (schedule.mode == ScheduleMode::ValidFor || random.OneIn(8)) {
    schedule.validFor = random.OneOf<int>({3600, 60, 0, -1});
  } else {
    for (int count = random.Below(3); count > 0; --count) {
      const int start = random.Below(10080);
      schedule.windows.push_back({start, start + random.Below(600)});
    }
  }
  return schedule;
}

Wifi::BackhaulConfig Backhaul(Random& random) { return {Flip(random), SSID(random), Passphrase(random)}; }

Wifi::MeshInfo Mesh(Random& random) {
  Wifi::MeshInfo info{{}, Flip(random)};
  for (int count = random.Below(3); count > 0; --count) {
    info.models.insert(SupportedModel{random.OneOf<int>({0, 1, 2, 3, 0, 1, 2, 3, -1, 4})});
  }
  return info;
}

}  // namespace

const std::vector<RequestKind>& RequestKinds() {
  static const std::vector<RequestKind> kKinds = {
      {"CreateNetwork",
       [](const State& state, const Capabilities& capabilities, Random& random) {
         const Wifi::NetworkCreateInfo info = {SSID(random), SSID(random), Passphrase(random)};
         return StateOf(CreateNetwork(state, capabilities, info, "br0", random.Below(1000)));
       }},
      {"DeleteNetwork",
       [](const State& state, const Capabilities&, Random& random) {
         return StateOf(DeleteNetwork(state, NetworkId(state, random)));
       }},
      {"CreateMACFilterProfile",
       [](const State& state, const Capabilities&, Random& random) {
         const Wifi::MACFilterProfile profile = Profile(7, random);
         return StateOf(CreateMACFilterProfile(state, profile, random.OneIn(5)));
       }},
      {"ModifyMACFilterProfile",
       [](const State& state, const Capabilities&, Random& random) {
         return StateOf(ModifyMACFilterProfile(state, Profile(ProfileId(state, random), random)));
       }},
      {"DeleteMACFilterProfiles",
       [](const State& state, const Capabilities&, Random& random) {
         std::set<int> ids = {ProfileId(state, random)};
         if (random.OneIn(4)) {
           ids.insert(ProfileId(state, random));
         }
         return StateOf(DeleteMACFilterProfiles(state, ids));
       }},
      {"AssignMACFilterProfile",
       [](const State& state, const Capabilities&, Random& random) {
         const int networkId = NetworkId(state, random);
         return StateOf(AssignMACFilterProfile(state, networkId, ProfileId(state, random)));
       }},
      {"SetMACFilterGlobal",
       [](const State& state, const Capabilities& capabilities, Random& random) {
         return StateOf(SetMACFilterGlobal(state, capabilities,
                                           {FilterDevices(random), Flip(random), random.Below(20) - 5}));
       }},
      {"RotatePassword",
       [](const State& state, const Capabilities& capabilities, Random& random) {
         const Wifi::NetworkRadioPair target = {NetworkId(state, random), Radio(random)};
         const std::string passphrase = Passphrase(random);
         return StateOf(RotatePassword(state, capabilities, target, passphrase, random.Below(1000)));
       }},
      {"SetSchedule",
       [](const State& state, const Capabilities& capabilities, Random& random) {
         const Wifi::NetworkSchedule schedule = Schedule(state, random);
         return StateOf(SetSchedule(state, capabilities, schedule, random.Below(1000)));
       }},
      {"SetCountryCode",
       [](const State& state, const Capabilities& capabilities, Random& random) {
         using enum CountryCode;
         return StateOf(SetCountryCode(
             state, capabilities,
             random.OneOf<CountryCode>({DE, US, CA, JP, CN, FR, ZW, MaxCountryCode, CountryCode{198}})));
       }},
      {"SetContext",
       [](const State& state, const Capabilities&, Random& random) {
         return StateOf(SetContext(
             state, random.OneOf<std::string>({"router", "bridge", "cellar", "", std::string(65, 'c')})));
       }},
      {"Activate",
       [](const State& state, const Capabilities&, Random& random) {
         return StateOf(Activate(state,
                                 {NetworkId(state, random), random.OneOf<std::string>({"br0", "br1", "br2"})},
                                 {"br0", "br1"}));
       }},
      {"Deactivate", [](const State& state, const Capabilities&,
                        Random& random) { return StateOf(Deactivate(state, NetworkId(state, random))); }},
      {"ModifyStation",
       [](const State& state, const Capabilities& capabilities, Random& random) {
         return StateOf(ModifyStation(state, capabilities, Station(random)));
       }},
      {"ModifyBackhaul", [](const State& state, const Capabilities&,
                            Random& random) { return StateOf(ModifyBackhaul(state, Backhaul(random))); }},
      {"ModifyBackhaulSTA",
       [](const State& state, const Capabilities&, Random& random) {
         return StateOf(ModifyBackhaulSTA(state, Backhaul(random)));
       }},
      {"EnableScan",
       [](const State& state, const Capabilities&, Random& random) {
         return StateOf(EnableScan(state, ScanType{random.Below(6) - 2}));
       }},
      {"ModifyMeshInfo", [](const State& state, const Capabilities&,
                            Random& random) { return StateOf(ModifyMeshInfo(state, Mesh(random))); }},
      {"SwapBackhaulBand",
       [](const State& state, const Capabilities& capabilities, Random& random) {
         return StateOf(SwapBackhaulBand(state, capabilities, Flip(random)));
       }},
  };
  return kKinds;
}

}  // namespace TALO::Wifid
