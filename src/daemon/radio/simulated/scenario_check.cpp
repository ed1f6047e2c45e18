#include "daemon/radio/simulated/scenario_check.h"

#include "daemon/json/record_json.h"
#include "daemon/model/text.h"
#include "daemon/model/validation.h"
#include "daemon/radio/simulated/hardware.h"
#include "daemon/radio/simulated/security.h"

#include <algorithm>
#include <array>

namespace TALO::Wifid {

namespace {

using RecordJson::ElementPath;
using RecordJson::Fail;
using Wifi::Util::MACAddress;

constexpr int kWeakestSignal = -100;
constexpr int kMostBroadcasts = 10'000;

void Require(bool condition, const std::string& where, const std::string& otherwise) {
  if (!condition) {
    Fail(where, otherwise);
  }
}

void Require(const Result<void>& check, const std::string& where) {
  if (!check.Succeeded()) {
    throw FormError(where + ": " + check.Why().sentence);
  }
}

void RequireNotNegative(int number, const std::string& where) { Require(number >= 0, where, "is negative"); }

void RequireLaterThan(int earlier, const std::optional<int>& later, const std::string& where,
                      const std::string& earlierName) {
  Require(!later || *later > earlier, where, "is not after " + earlierName);
}

/// It goes into a sentence of one line.
void RequireOneLine(const std::string& text, const std::string& where) {
  const auto isControl = [](char c) { return (c >= '\0' && c < ' ') || c == '\x7F'; };
  Require(std::ranges::none_of(text, isControl), where, "is more than one line of text");
}

void CheckAddress(const MACAddress& address, std::set<MACAddress>& used, const std::string& where) {
  // The lowest bit of the first byte, that is of its second digit.
  constexpr std::string_view kOddDigits = "13579bdf";
  Require(address != MACAddress(), where, "is missing or all zero");
  Require(kOddDigits.find(address.ToString()[1]) == std::string_view::npos, where, "is a group address");
  Require(used.insert(address).second, where, "is used twice");
}

void CheckSignal(int signal, const std::string& where) {
  Require(signal >= kWeakestSignal && signal < 0, where, "is not from -100 to -1");
}

void CheckKey(const AccessPoint& neighbour, const std::string& where) {
  const std::string passphrase = where + ".passphrase";
  Require(IsEnterprise(neighbour.securityMode) || neighbour.user.empty(), where + ".user",
          "is for enterprise modes");
  if (IsPersonal(neighbour.securityMode)) {
    Require(CheckPassphrase(neighbour.passphrase), passphrase);
  } else if (IsEnterprise(neighbour.securityMode)) {
    Require(!neighbour.user.empty(), where + ".user", "is missing");
    Require(!neighbour.passphrase.empty(), passphrase, "is missing");
  } else {
    Require(neighbour.passphrase.empty(), passphrase,
            "is of no use with " + NameOrNumber(neighbour.securityMode));
  }
}

void CheckNeighbour(const AccessPoint& neighbour, std::set<MACAddress>& addresses, const std::string& where) {
  constexpr std::array<int, 4> kWidths = {20, 40, 80, 160};
  Require(CheckSSID(neighbour.ssid), where + ".ssid");
  CheckAddress(neighbour.bssid, addresses, where + ".bssid");
  Require(IsChannel(neighbour.channel), where + ".channel", "is not a channel of 2.4 or 5 GHz");
  Require(std::ranges::find(kWidths, neighbour.channelWidth) != kWidths.end(), where + ".channelWidth",
          "is none of 20, 40, 80 and 160");
  CheckSignal(neighbour.signal, where + ".signal");
  Require(neighbour.securityMode != SecurityMode::Error, where + ".securityMode", "is no security mode");
  CheckKey(neighbour, where);
  RequireNotNegative(neighbour.transmitRate, where + ".transmitRate");
  RequireNotNegative(neighbour.appearsAt, where + ".appearsAt");
  RequireLaterThan(neighbour.appearsAt, neighbour.vanishesAt, where + ".vanishesAt", "appearsAt");
}

void CheckBands(const std::vector<RadioFrequency>& bands, const std::string& where) {
  Require(!bands.empty(), where, "is empty");
  std::set<RadioFrequency> seen;
  for (std::size_t i = 0; i < bands.size(); ++i) {
    const std::string path = ElementPath(where, i);
    Require(bands[i] == RadioFrequency::Band2_4GHz || bands[i] == RadioFrequency::Band5GHz, path,
            "is neither Band2_4GHz nor Band5GHz");
    Require(seen.insert(bands[i]).second, path, "is listed twice");
  }
}

void CheckRadio(RadioFrequency radio, const std::string& where) {
  Require(radio != RadioFrequency::Error && radio != RadioFrequency::SmartConnect, where,
          "is missing or no single radio");
}

void CheckDevice(const Device& device, std::set<MACAddress>& addresses, const std::string& where) {
  CheckAddress(device.address, addresses, where + ".address");
  for (std::size_t i = 0; i < device.knows.size(); ++i) {
    const std::string path = ElementPath(where + ".knows", i);
    Require(CheckSSID(device.knows[i].ssid), path + ".ssid");
    if (!device.knows[i].passphrase.empty()) {
      Require(CheckPassphrase(device.knows[i].passphrase), path + ".passphrase");
    }
  }
  CheckBands(device.bands, where + ".bands");
  CheckSignal(device.signal, where + ".signal");
  RequireNotNegative(device.transmitRate, where + ".transmitRate");
  RequireNotNegative(device.receiveRate, where + ".receiveRate");
  RequireNotNegative(device.joinMilliseconds.value_or(0), where + ".joinMilliseconds");
  RequireNotNegative(device.arrivesAt, where + ".arrivesAt");
  RequireLaterThan(device.arrivesAt, device.leavesAt, where + ".leavesAt", "arrivesAt");
  RequireNotNegative(device.pressesAfter.value_or(0), where + ".pressesAfter");
  for (std::size_t i = 0; i < device.roams.size(); ++i) {
    const std::string path = ElementPath(where + ".roams", i);
    RequireNotNegative(device.roams[i].at, path + ".at");
    CheckRadio(device.roams[i].radio, path + ".radio");
  }
  Require(device.broadcastsPerSecond >= 0 && device.broadcastsPerSecond <= kMostBroadcasts,
          where + ".broadcastsPerSecond", "is not from 0 to 10000");
}

template <typename Fault>
void CheckFault(const Fault& fault, const std::string& where) {
  CheckRadio(fault.radio, where + ".radio");
  RequireNotNegative(fault.skip, where + ".skip");
  Require(fault.times >= 1, where + ".times", "is less than 1");
  RequireOneLine(fault.reason, where + ".reason");
}

void CheckFaults(const Faults& faults) {
  for (std::size_t i = 0; i < faults.apply.size(); ++i) {
    const std::string where = ElementPath("faults.apply", i);
    CheckFault(faults.apply[i], where);
    RequireNotNegative(faults.apply[i].milliseconds.value_or(0), where + ".milliseconds");
    Require(!faults.apply[i].reason.empty() || faults.apply[i].milliseconds.has_value(), where,
            "has neither reason nor milliseconds");
  }
  for (std::size_t i = 0; i < faults.scan.size(); ++i) {
    const std::string where = ElementPath("faults.scan", i);
    CheckFault(faults.scan[i], where);
    Require(!faults.scan[i].reason.empty(), where + ".reason", "is missing");
  }
}

void CheckMeshNodes(const std::vector<MeshNode>& nodes) {
  std::set<std::string> serials;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const std::string where = ElementPath("meshNodes", i);
    Require(!nodes[i].serial.empty(), where + ".serial", "is missing");
    Require(serials.insert(nodes[i].serial).second, where + ".serial", "is used twice");
    Require(nodes[i].model != SupportedModel::Error, where + ".model", "is missing or no model");
  }
}

void CheckTimings(const Timings& timings) {
  RequireNotNegative(timings.applyMilliseconds, "timings.applyMilliseconds");
  RequireNotNegative(timings.bssMilliseconds, "timings.bssMilliseconds");
  RequireNotNegative(timings.scanMilliseconds, "timings.scanMilliseconds");
  RequireNotNegative(timings.joinMilliseconds, "timings.joinMilliseconds");
  RequireNotNegative(timings.joinSpreadMilliseconds, "timings.joinSpreadMilliseconds");
}

}  // namespace

void CheckScenario(const Scenario& scenario) {
  Require(!scenario.bridges.contains(""), "bridges", "holds an empty name");
  std::set<MACAddress> addresses;
  for (std::size_t i = 0; i < scenario.neighbours.size(); ++i) {
    CheckNeighbour(scenario.neighbours[i], addresses, ElementPath("neighbours", i));
  }
  for (std::size_t i = 0; i < scenario.devices.size(); ++i) {
    CheckDevice(scenario.devices[i], addresses, ElementPath("devices", i));
  }
  CheckMeshNodes(scenario.meshNodes);
  CheckFaults(scenario.faults);
  CheckTimings(scenario.timings);
}

}  // namespace TALO::Wifid
