#pragma once

// The one list of every record's members. Its JSON object, its signature and marshalling on the bus, its form
// in the state file and its printing in tests all come from here. Not installed: it would bring Boost to
// every user.

#include "client/records.h"

#include <boost/hana/adapt_struct.hpp>

#include <algorithm>
#include <array>
#include <string_view>

BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::NetworkCreateInfo, networkName, ssid, passphrase);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::NetworkRadioSetting, radio, enable, up, interface, radioInterface, bssid,
                        ssid, passphrase, passphraseChangedAt, keyManagement);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::NetworkSetting, id, networkName, ssid, hidden, securityMode, passphrase,
                        passphraseChangedAt, activated, context, bridge, macFilterProfileId,
                        macFilterProfileName, interfaces, up, radios);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::NetworkRadioPair, id, radio);

BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::RadioSetting, radio, enable, channel, channelWidth, transmitPower,
                        wifiGeneration, country);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::RadioStatus, radio, up, channel, channelWidth, utilisation, stations,
                        bssid, interfaces);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::RadioStatusSimple, radio, up, channel, bssid, interfaces);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::RadioIfStatus, radio, radioInterface, enabledInterfaces);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::RadioConversionInfo, conversionMap, backhaulSwapped);

BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::ScanResult, radio, ssid, bssid, channel, channelWidth, signal,
                        securityMode, wps, age);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::StationSetting, enable, essid, user, password, bssid, securityMode,
                        radio);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::StationStatus, radio, interface, connected, state, reason, essid, bssid,
                        channel, signal, transmitRate, connectedTime);

BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::BackhaulConfig, enable, ssid, password);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::BackhaulSetting, enable, ssid, password, radios);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::BackhaulSTASetting, enable, ssid, password, radios);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::BackhaulSTAStatus, radio, interface, connected, scanType, parent, channel,
                        signal, connectedTime);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::MeshInfo, models, isRepeater);

BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::MACFilterDevice, name, address);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::MACFilterGlobal, devices, enablePreventBroadcast, maximumBroadcast);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::MACFilterProfile, id, name, action, devices);

BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::ScheduleStatusEntry, radio, mode, secondsToSwitch);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::ScheduleWindow, start, end);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::NetworkSchedule, networkId, radio, mode, validFor, windows);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::WPS_ERConfigInput, ifName, ssid, key, mode);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::DeviceInfo, address, name, ipAddress, networkId, ssid, radio, interface,
                        signal, transmitRate, receiveRate, connectedTime);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::CountryCodeCapability, immutable, codes);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifi::ActivationInfo, id, bridge);

namespace TALO::Wifi {

/// What a text member holds. It decides the member's form: texts must be UTF-8 and are `s` on the bus; bytes
/// and secrets may hold anything and are `ay`. Bytes have a readable and an exact form in JSON; a message
/// that holds a secret is marked sensitive.
enum class TextKind { Text, Bytes, Secret };

/// By the member's name, which is the same for the same thing in every record.
constexpr TextKind TextKindOf(std::string_view member) {
  constexpr std::array<std::string_view, 4> kBytes = {"ssid", "essid", "networkName", "user"};
  constexpr std::array<std::string_view, 3> kSecrets = {"passphrase", "password", "key"};
  if (std::ranges::find(kBytes, member) != kBytes.end()) {
    return TextKind::Bytes;
  }
  return std::ranges::find(kSecrets, member) != kSecrets.end() ? TextKind::Secret : TextKind::Text;
}

}  // namespace TALO::Wifi
