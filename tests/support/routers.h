#pragma once

// Routers as they come, states to begin from, and what a rule answered.

#include "daemon/model/capabilities.h"
#include "daemon/model/change.h"
#include "daemon/model/first_state.h"
#include "daemon/model/result.h"
#include "daemon/model/state.h"
#include "support/print_model.h"

#include <gtest/gtest.h>

#include <string>

namespace TALO::Wifid {

inline Capabilities TriBandRouter(SupportedModel model = SupportedModel::Alder100) {
  return {model,
          {{RadioFrequency::Band2_4GHz,
            "wlan0",
            Wifi::Util::MACAddress("02:00:00:00:00:00"),
            16,
            {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13},
            40},
           {RadioFrequency::Band5GHz_1,
            "wlan1",
            Wifi::Util::MACAddress("02:00:00:00:01:00"),
            16,
            {36, 40, 44, 48, 52, 56, 60, 64},
            80},
           {RadioFrequency::Band5GHz_2,
            "wlan2",
            Wifi::Util::MACAddress("02:00:00:00:02:00"),
            16,
            {100, 104, 108, 112, 116, 120, 124, 128, 132, 136, 140},
            80}}};
}

inline Capabilities DualBandRouter(SupportedModel model = SupportedModel::Cedar300) {
  return {model,
          {{RadioFrequency::Band2_4GHz,
            "wlan0",
            Wifi::Util::MACAddress("02:00:00:00:00:00"),
            16,
            {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13},
            40},
           {RadioFrequency::Band5GHz,
            "wlan1",
            Wifi::Util::MACAddress("02:00:00:00:01:00"),
            16,
            {36,  40,  44,  48,  52,  56,  60,  64,  100, 104, 108, 112, 116,
             120, 124, 128, 132, 136, 140, 144, 149, 153, 157, 161, 165},
            80}}};
}

/// As a computer with one old radio is.
inline Capabilities LowBandRouter() { return {SupportedModel::Cedar300, {DualBandRouter().radios.front()}}; }

/// The networks 1 to `count`, with the SSIDs "ssid1" and so on.
inline State StateWithNetworks(const Capabilities& capabilities, int count) {
  State state = MakeFirstState(capabilities, CountryCode::DE);
  state.nextNetworkId = count + 1;
  for (int id = 1; id <= count; ++id) {
    const std::string number = std::to_string(id);
    NetworkState network;
    network.id = id;
    network.networkName = "name" + number;
    network.ssid = "ssid" + number;
    network.passphrase = "passphrase" + number;
    network.passphraseChangedAt = 1000 + id;
    network.activated = true;
    network.context = "router";
    network.bridge = "br0";
    network.slot = id;
    state.networks.push_back(network);
  }
  return state;
}

/// An activated network in the slot of its ID.
inline NetworkState MakeNetwork(int id, const std::string& ssid) {
  NetworkState network;
  network.id = id;
  network.networkName = ssid;
  network.ssid = ssid;
  network.passphrase = "correct horse";
  network.passphraseChangedAt = 1'000;
  network.activated = true;
  network.context = "router";
  network.bridge = "br-lan";
  network.slot = id;
  return network;
}

/// Networks 1 "Home" and 2 "Guest".
inline State HomeState(const Capabilities& capabilities) {
  State state = MakeFirstState(capabilities, CountryCode::DE);
  state.networks = {MakeNetwork(1, "Home"), MakeNetwork(2, "Guest")};
  state.nextNetworkId = 3;
  return state;
}

/// Why a rule refused; a failure of the test where it did not.
template <typename T>
Refusal WhyNot(const Result<T>& result) {
  if (result.Succeeded()) {
    ADD_FAILURE() << "was not refused";
    return {};
  }
  return result.Why();
}

/// What a rule answered; a failure of the test where it refused.
template <typename T>
T ValueOf(const Result<T>& result) {
  if (!result.Succeeded()) {
    ADD_FAILURE() << "was refused: " << result.Why().sentence;
    return {};
  }
  return result.Value();
}

/// The state that a rule made.
template <typename Answer>
State StateAfter(const Result<Change<Answer>>& result) {
  return ValueOf(result).state;
}

}  // namespace TALO::Wifid
