#include "daemon/model/state_check.h"

#include "support/full_state.h"
#include "support/routers.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using Wifi::MACFilterAction;
using Wifi::Util::MACAddress;

struct Fault {
  std::function<void(State&)> make;
  std::string sentence;
};

/// Expects that FullState is no longer sound with each of these by itself.
void ExpectFound(const std::vector<Fault>& faults) {
  for (const Fault& fault : faults) {
    SCOPED_TRACE(fault.sentence);
    State state = FullState();
    fault.make(state);
    EXPECT_EQ(WhyNot(CheckState(state)).sentence, fault.sentence);
  }
}

template <typename T>
void ExpectSound(const T& state) {
  const auto check = CheckState(state);
  EXPECT_TRUE(check.Succeeded()) << check.Why().sentence;
}

/// A network beside that of FullState.
NetworkState Second() {
  NetworkState network = MakeNetwork(4, "Second");
  network.slot = 6;
  return network;
}

TEST(CheckState, FindsNothingInWhatTheRulesMake) {
  ExpectSound(FullState());
  ExpectSound(HomeState(TriBandRouter()));
  ExpectSound(MakeFirstState(DualBandRouter(), CountryCode::CN));
  ExpectSound(State());
  State two = FullState();
  two.networks.push_back(Second());
  ExpectSound(two);
}

TEST(CheckState, FindsWhatCannotBeAmongTheSettingsOfTheRouter) {
  ExpectFound({
      {[](State& state) { state.context = ""; },
       "the state: the context \"\" has 0 bytes, it must have 1 to 64"},
      {[](State& state) { state.country = CountryCode::MaxCountryCode; }, "the country is MaxCountryCode"},
      {[](State& state) { state.country = CountryCode{60000}; }, "the country is 60000"},
      {[](State& state) { state.scanType = ScanType::Error; }, "the scan type is Error"},
      {[](State& state) { state.scanType = ScanType{7}; }, "the scan type is 7"},
      {[](State& state) { state.mesh.models.insert(SupportedModel{9}); }, "the mesh has the model 9"},
      {[](State& state) { state.backhaul.ssid = std::string(33, 's'); },
       "the backhaul: the backhaul SSID \"" + std::string(33, 's') + "\" has 33 bytes, it must have 1 to 32"},
      {[](State& state) { state.backhaulSTA.password = "short"; },
       "the backhaul station: the passphrase has 5 characters, it must have 8 to 63, or 64 hexadecimal "
       "digits"},
      {[](State& state) { state.backhaul.ssid = state.networks[0].ssid; },
       "the backhaul: the SSID \"\\x00\\xff\\x0a\\\"\" is in use by network 3"},
  });
}

TEST(CheckState, FindsWhatCannotBeAmongTheRadios) {
  ExpectFound({
      {[](State& state) { state.radios[0].radio = RadioFrequency::SmartConnect; },
       "the radio settings are for the radio SmartConnect, which cannot be one"},
      {[](State& state) { state.radios[0].radio = RadioFrequency::Error; },
       "the radio settings are for the radio Error, which cannot be one"},
      {[](State& state) { std::swap(state.radios[0], state.radios[1]); },
       "the radio settings are not in the order of their radios"},
      {[](State& state) { state.radios[1] = state.radios[0]; },
       "the radio settings are not in the order of their radios"},
      {[](State& state) { state.radios[0].channel = 15; }, "the radio Band2_4GHz has the channel 15"},
      {[](State& state) { state.radios[0].channel = -1; }, "the radio Band2_4GHz has the channel -1"},
      {[](State& state) { state.radios[1].channel = 100; }, "the radio Band5GHz_1 has the channel 100"},
      {[](State& state) { state.radios[1].channelWidth = 0; }, "the radio Band5GHz_1 has channels of 0 MHz"},
      {[](State& state) { state.radios[1].transmitPower = 101; },
       "the radio Band5GHz_1 has the transmit power 101"},
      {[](State& state) { state.radios[1].transmitPower = -1; },
       "the radio Band5GHz_1 has the transmit power -1"},
      {[](State& state) { state.radios[1].wifiGeneration = 0; },
       "the radio Band5GHz_1 has the wifi generation 0"},
      {[](State& state) { state.stations.push_back(state.stations[0]); },
       "the station settings are not in the order of their radios"},
      {[](State& state) { state.stations[0].essid = ""; },
       "the station of the radio Band2_4GHz: the essid \"\" has 0 bytes, it must have 1 to 32"},
      {[](State& state) { state.stations[0].securityMode = SecurityMode::WEP; },
       "the station of the radio Band2_4GHz: a station cannot use the security mode WEP"},
      {[](State& state) { state.stations[0].bssid = MACAddress("01:00:00:00:00:00"); },
       "the station of the radio Band2_4GHz: the BSSID 01:00:00:00:00:00 is a group address"},
  });
}

TEST(CheckState, FindsWhatCannotBeAmongTheNetworks) {
  ExpectFound({
      {[](State& state) { state.nextNetworkId = 3; },
       "the ID 3 among the networks is not below the next, which is 3"},
      {[](State& state) { state.networks[0].id = 0; },
       "the ID 0 among the networks is not below the next, which is 12"},
      {[](State& state) { state.networks.clear(), state.nextNetworkId = 0; },
       "the next ID of the networks is 0"},
      {[](State& state) { state.networks.push_back(Second()), state.networks[1].id = 3; },
       "the networks are not in the order of their IDs"},
      {[](State& state) {
         state.networks.push_back(Second()), state.networks[1].ssid = state.networks[0].ssid;
       },
       "the network 4 has the SSID \"\\x00\\xff\\x0a\\\"\" of another"},
      {[](State& state) { state.networks.push_back(Second()), state.networks[1].slot = 5; },
       "the network 4 has the slot 5, which cannot be or is another's"},
      {[](State& state) { state.networks[0].slot = 0; },
       "the network 3 has the slot 0, which cannot be or is another's"},
      {[](State& state) { state.networks[0].slot = 256; },
       "the network 3 has the slot 256, which cannot be or is another's"},
      {[](State& state) { state.networks[0].ssid = ""; },
       "the network 3: the SSID \"\" has 0 bytes, it must have 1 to 32"},
      {[](State& state) { state.networks[0].networkName = ""; },
       "the network 3: the network name \"\" has 0 bytes, it must have 1 to 32"},
      {[](State& state) { state.networks[0].securityMode = SecurityMode::Error; },
       "the network 3 has the security mode Error"},
      {[](State& state) { state.networks[0].context = ""; },
       "the network 3: the context \"\" has 0 bytes, it must have 1 to 64"},
      {[](State& state) { state.networks[0].bridge = ""; }, "the network 3 has no bridge"},
      {[](State& state) { state.networks[0].macFilterProfileId = 3; },
       "the network 3 uses the MAC filter profile 3, which does not exist"},
      {[](State& state) { state.networks[0].macFilterProfileId = -2; },
       "the network 3 uses the MAC filter profile -2, which does not exist"},
  });
}

TEST(CheckState, FindsWhatCannotBeAmongPassphrasesAndSchedules) {
  const std::string length = " characters, it must have 8 to 63, or 64 hexadecimal digits";
  ExpectFound({
      {[](State& state) { state.networks[0].passphrase = "short"; },
       "the network 3: the passphrase has 5" + length},
      {[](State& state) { state.networks[0].passphraseChangedAt = -1; },
       "the passphrase of the network 3 was changed at a time that cannot be"},
      {[](State& state) { state.networks[0].passphraseChangedAt = 253402300800; },
       "the passphrase of the network 3 was changed at a time that cannot be"},
      {[](State& state) { state.networks[0].radioPassphrases[0].passphrase = ""; },
       "the network 3: the passphrase has 0" + length},
      {[](State& state) { state.networks[0].radioPassphrases[0].passphraseChangedAt = -1; },
       "a passphrase of the network 3 was changed at a time that cannot be"},
      {[](State& state) { state.networks[0].radioPassphrases[0].radio = RadioFrequency{9}; },
       "the passphrases of the network 3 are for the radio 9, which cannot be one"},
      {[](State& state) {
         auto& own = state.networks[0].radioPassphrases;
         own.push_back(own[0]);
       },
       "the passphrases of the network 3 are not in the order of their radios"},
      {[](State& state) { state.networks[0].schedules[0].mode = ScheduleMode::Error; },
       "the network 3: the schedule mode Error does not exist"},
      {[](State& state) { state.networks[0].schedules[0].mode = ScheduleMode::ValidFor; },
       "the network 3: the schedule of network 3 has 2 windows, which ValidFor does not take"},
      {[](State& state) { state.networks[0].schedules[0].validUntil = -1; },
       "a schedule of the network 3 ends at a time that cannot be"},
      {[](State& state) { state.networks[0].schedules[0].windows[1].end = 10081; },
       "the network 3: the schedule of network 3 has the window 1440 to 10081, the week is from 0 to 10080"},
      {[](State& state) { state.networks[0].schedules[0].radio = RadioFrequency::SmartConnect; },
       "the schedules of the network 3 are for the radio SmartConnect, which cannot be one"},
      {[](State& state) {
         auto& schedules = state.networks[0].schedules;
         schedules.push_back(schedules[0]);
       },
       "the schedules of the network 3 are not in the order of their radios"},
  });
  State open = FullState();
  open.networks[0].securityMode = SecurityMode::OWE;
  open.networks[0].passphrase = "";
  ExpectSound(open);
}

TEST(CheckState, FindsWhatCannotBeAmongTheMACFilters) {
  ExpectFound({
      {[](State& state) { state.nextMACFilterProfileId = 6; },
       "the ID 6 among the MAC filter profiles is not below the next, which is 6"},
      {[](State& state) { state.macFilterProfiles[1].id = 2; },
       "the MAC filter profiles are not in the order of their IDs"},
      {[](State& state) { state.macFilterProfiles[0].action = MACFilterAction::Error; },
       "the MAC filter profile 2: the MAC filter action Error does not exist"},
      {[](State& state) { state.macFilterProfiles[1].name = ""; },
       "the MAC filter profile 6: the MAC filter profile name \"\" has 0 bytes, it must have 1 to 64"},
      {[](State& state) {
         auto& devices = state.macFilterProfiles[1].devices;
         devices[1] = devices[0];
       },
       "the MAC filter profile 6: the MAC filter profile \"Office\" lists the MAC address 02:00:00:00:00:04 "
       "twice"},
      {[](State& state) { state.macFilterGlobal.maximumBroadcast = -1; },
       "the broadcast limit: the maximum of -1 broadcast frames a second is negative, it must be 0 or more"},
      {[](State& state) {
         for (int id = 7; id <= 69; ++id) {
           state.macFilterProfiles.push_back(state.macFilterProfiles[1]);
           state.macFilterProfiles.back().id = id;
         }
         state.nextMACFilterProfileId = 70;
       },
       "there are 65 MAC filter profiles"},
  });
}

TEST(CheckState, SaysTheFirstThingThatIsWrong) {
  State state = FullState();
  state.country = CountryCode::MaxCountryCode;
  state.networks[0].ssid = "";
  EXPECT_EQ(WhyNot(CheckState(state)).sentence, "the country is MaxCountryCode");
}

}  // namespace

}  // namespace TALO::Wifid
