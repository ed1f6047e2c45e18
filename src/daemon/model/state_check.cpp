#include "daemon/model/state_check.h"

#include "daemon/model/capabilities.h"
#include "daemon/model/mac_filter.h"
#include "daemon/model/mesh.h"
#include "daemon/model/passwords.h"
#include "daemon/model/schedules.h"
#include "daemon/model/stations.h"
#include "daemon/model/text.h"
#include "daemon/model/topology.h"
#include "daemon/model/validation.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <string>

namespace TALO::Wifid {

namespace {

constexpr std::int64_t kEndOfTime = 253402300799;  ///< the last second of the year 9999
constexpr int kMaximumSlot = 255;                  ///< the last byte of a BSSID counts them

/// Keeps the first thing that is wrong.
class Finding {
 public:
  void Require(bool holds, const std::string& sentence) {
    if (!holds && !refusal_) {
      refusal_ = Refusal{ErrorCode::InvalidArgument, sentence};
    }
  }
  /// `where` names whose check it is.
  void Require(const Result<void>& check, const std::string& where) {
    if (!check.Succeeded() && !refusal_) {
      refusal_ = Refusal{check.Why().code, where + ": " + check.Why().sentence};
    }
  }

  Result<void> Get() const { return refusal_ ? Result<void>(*refusal_) : Result<void>(); }

 private:
  std::optional<Refusal> refusal_;
};

bool IsTime(std::int64_t time) { return time >= 0 && time <= kEndOfTime; }

bool IsWithin(int value, int first, int last) { return value >= first && value <= last; }

template <typename T, typename Member>
bool IsAscending(const std::vector<T>& records, Member member) {
  return std::ranges::adjacent_find(records, std::greater_equal<>(), member) == records.end();
}

/// Records of which there is at most one a radio.
template <typename T>
void CheckRadiosOf(const std::vector<T>& records, const std::string& what, Finding& finding) {
  for (const T& record : records) {
    finding.Require(IsReal(record.radio) && record.radio != RadioFrequency::SmartConnect,
                    what + " are for the radio " + NameOrNumber(record.radio) + ", which cannot be one");
  }
  finding.Require(IsAscending(records, &T::radio), what + " are not in the order of their radios");
}

/// Records with IDs that count up and are never used again.
template <typename T>
void CheckIDsOf(const std::vector<T>& records, int next, const std::string& what, Finding& finding) {
  finding.Require(next >= 1, "the next ID of the " + what + " is " + std::to_string(next));
  finding.Require(IsAscending(records, &T::id), "the " + what + " are not in the order of their IDs");
  for (const T& record : records) {
    finding.Require(IsWithin(record.id, 1, next - 1), "the ID " + std::to_string(record.id) + " among the " +
                                                          what + " is not below the next, which is " +
                                                          std::to_string(next));
  }
}

/// The channels of 20 MHz of a radio's band, whatever the country.
bool IsChannelOfBand(const RadioState& radio) {
  switch (radio.radio) {
    case RadioFrequency::Band2_4GHz:
      return IsWithin(radio.channel, 1, 14);
    case RadioFrequency::Band5GHz:
      return IsWithin(radio.channel, 32, 177);
    case RadioFrequency::Band5GHz_1:
      return IsWithin(radio.channel, 32, 68);
    case RadioFrequency::Band5GHz_2:
      return IsWithin(radio.channel, 96, 177);
    case RadioFrequency::Error:
    case RadioFrequency::SmartConnect:
      break;
  }
  return false;
}

void CheckRadios(const State& state, Finding& finding) {
  static const std::set<int> kChannelWidths = {20, 40, 80, 160, 320};
  CheckRadiosOf(state.radios, "the radio settings", finding);
  for (const RadioState& radio : state.radios) {
    const std::string where = "the radio " + NameOrNumber(radio.radio);
    finding.Require(radio.channel == kAutomaticChannel || IsChannelOfBand(radio),
                    where + " has the channel " + std::to_string(radio.channel));
    finding.Require(kChannelWidths.contains(radio.channelWidth),
                    where + " has channels of " + std::to_string(radio.channelWidth) + " MHz");
    finding.Require(IsWithin(radio.transmitPower, 0, 100),
                    where + " has the transmit power " + std::to_string(radio.transmitPower));
    finding.Require(IsWithin(radio.wifiGeneration, 1, 8),
                    where + " has the wifi generation " + std::to_string(radio.wifiGeneration));
  }
  CheckRadiosOf(state.stations, "the station settings", finding);
  for (const Wifi::StationSetting& station : state.stations) {
    finding.Require(CheckStation(station), "the station of the radio " + NameOrNumber(station.radio));
  }
}

void CheckSchedules(const NetworkState& network, const std::string& where, Finding& finding) {
  CheckRadiosOf(network.schedules, "the schedules of " + where, finding);
  for (const ScheduleState& schedule : network.schedules) {
    finding.Require(IsTime(schedule.validUntil), "a schedule of " + where + " ends at a time that cannot be");
    finding.Require(CheckSchedule({network.id, schedule.radio, schedule.mode, 0, schedule.windows}), where);
  }
}

void CheckPassphrases(const NetworkState& network, const std::string& where, Finding& finding) {
  CheckRadiosOf(network.radioPassphrases, "the passphrases of " + where, finding);
  finding.Require(IsTime(network.passphraseChangedAt),
                  "the passphrase of " + where + " was changed at a time that cannot be");
  if (HasPassphrase(network.securityMode)) {
    finding.Require(CheckPassphrase(network.passphrase), where);
  }
  for (const RadioPassphrase& own : network.radioPassphrases) {
    finding.Require(IsTime(own.passphraseChangedAt),
                    "a passphrase of " + where + " was changed at a time that cannot be");
    finding.Require(CheckPassphrase(own.passphrase), where);
  }
}

void CheckNetworks(const State& state, Finding& finding) {
  CheckIDsOf(state.networks, state.nextNetworkId, "networks", finding);
  std::set<std::string> ssids;
  std::set<int> slots;
  for (const NetworkState& network : state.networks) {
    const std::string where = "the network " + std::to_string(network.id);
    finding.Require(CheckSSID(network.ssid), where);
    finding.Require(CheckSSID(network.networkName, "network name"), where);
    finding.Require(ssids.insert(network.ssid).second,
                    where + " has the SSID " + Quoted(network.ssid) + " of another");
    finding.Require(
        IsWithin(network.slot, kBackhaulSlot + 1, kMaximumSlot) && slots.insert(network.slot).second,
        where + " has the slot " + std::to_string(network.slot) + ", which cannot be or is another's");
    finding.Require(IsReal(network.securityMode),
                    where + " has the security mode " + NameOrNumber(network.securityMode));
    finding.Require(CheckContext(network.context), where);
    finding.Require(!network.bridge.empty(), where + " has no bridge");
    finding.Require(network.macFilterProfileId == kNoMACFilterProfile ||
                        std::ranges::binary_search(state.macFilterProfiles, network.macFilterProfileId, {},
                                                   &Wifi::MACFilterProfile::id),
                    where + " uses the MAC filter profile " + std::to_string(network.macFilterProfileId) +
                        ", which does not exist");
    CheckPassphrases(network, where, finding);
    CheckSchedules(network, where, finding);
  }
}

void CheckMACFilters(const State& state, Finding& finding) {
  CheckIDsOf(state.macFilterProfiles, state.nextMACFilterProfileId, "MAC filter profiles", finding);
  finding.Require(state.macFilterProfiles.size() <= kMaximumMACFilterProfiles,
                  "there are " + std::to_string(state.macFilterProfiles.size()) + " MAC filter profiles");
  for (const Wifi::MACFilterProfile& profile : state.macFilterProfiles) {
    finding.Require(CheckMACFilterProfile(profile), "the MAC filter profile " + std::to_string(profile.id));
  }
  finding.Require(CheckMACFilterGlobal(state.macFilterGlobal), "the broadcast limit");
}

void CheckMesh(const State& state, Finding& finding) {
  finding.Require(CheckBackhaul(state, state.backhaul), "the backhaul");
  finding.Require(CheckBackhaul(state, state.backhaulSTA), "the backhaul station");
  finding.Require(IsReal(state.scanType), "the scan type is " + NameOrNumber(state.scanType));
  for (const SupportedModel model : state.mesh.models) {
    finding.Require(IsReal(model), "the mesh has the model " + NameOrNumber(model));
  }
}

}  // namespace

Result<void> CheckState(const State& state) {
  Finding finding;
  finding.Require(CheckContext(state.context), "the state");
  finding.Require(
      state.country != CountryCode::MaxCountryCode && !Wifi::Util::FindEnumName(state.country).empty(),
      "the country is " + NameOrNumber(state.country));
  CheckRadios(state, finding);
  CheckMACFilters(state, finding);
  CheckNetworks(state, finding);
  CheckMesh(state, finding);
  return finding.Get();
}

}  // namespace TALO::Wifid
