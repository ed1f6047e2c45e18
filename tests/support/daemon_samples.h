#pragma once

#include "client/network_records.h"
#include "support/print_model.h"

#include <string>
#include <vector>

namespace TALO::Wifid {

/// Three radios, wlan0 to wlan2, at 02:00:00:00:00:00, 02:00:00:00:01:00 and 02:00:00:00:02:00.
Capabilities TriBandRadios(int maximumBSSs = 16);

/// Two radios, wlan0 and wlan1, at 02:00:00:00:00:00 and 02:00:00:00:01:00.
Capabilities DualBandRadios(int maximumBSSs = 16);

/// A network as CreateNetwork makes it, in the context "router" and on "br0", made 1000 seconds after 1970.
NetworkState MakeNetwork(int id, int slot, const std::string& ssid);

/// The default setting of every radio of TriBandRadios.
std::vector<RadioState> TriBandSettings();

/// A station setting for each of these radios that joins nothing.
std::vector<Wifi::StationSetting> StationsOff(const std::vector<RadioFrequency>& radios);

/// The radios of TriBandRadios and these networks.
State MakeState(int nextNetworkId, std::vector<NetworkState> networks);

/// What CreateNetwork is asked for; `MakeNetwork` has the same passphrase.
Wifi::NetworkCreateInfo InfoOf(const std::string& ssid);

/// What is in the air when all of the plan is: every BSS of an enabled radio is up and has no station.
std::vector<LiveRadio> LiveAsPlanned(const std::vector<RadioPlan>& plan);

}  // namespace TALO::Wifid
