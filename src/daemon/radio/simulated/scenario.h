#pragma once

#include "daemon/model/live.h"
#include "daemon/model/result.h"
#include "daemon/model/state.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// What a simulated driver finds around it, as docs/scenarios.md explains. Moments are seconds since the
/// driver's start.
namespace TALO::Wifid {

/// Somebody else's access point. Its channel says which radio hears it.
struct AccessPoint {
  std::string ssid;  ///< raw bytes
  bool hidden = false;
  Wifi::Util::MACAddress bssid;
  int channel = 0;
  int channelWidth = 20;  ///< MHz
  int signal = -65;       ///< dBm
  SecurityMode securityMode = SecurityMode::PersonalWPA2;
  std::string user;  ///< the identity that it takes, for enterprise modes
  std::string passphrase;
  bool wps = false;
  bool backhaul = false;   ///< a mesh parent: backhaul stations join it
  int transmitRate = 300;  ///< Mbit/s towards it
  int appearsAt = 0;
  std::optional<int> vanishesAt;

  bool operator==(const AccessPoint&) const = default;
};

/// A network that a device has stored; no passphrase for an open one.
struct Credential {
  std::string ssid;  ///< raw bytes
  std::string passphrase;

  bool operator==(const Credential&) const = default;
};

/// A device that moves to another radio of the network it is connected to.
struct Roam {
  int at = 0;
  RadioFrequency radio = RadioFrequency::Error;

  bool operator==(const Roam&) const = default;
};

/// A phone, a laptop, a printer: whatever joins a network of the router by itself.
struct Device {
  Wifi::Util::MACAddress address;
  std::string name;
  std::string ipAddress;
  std::vector<Credential> knows;  ///< the one it likes best first
  std::vector<RadioFrequency> bands = {RadioFrequency::Band5GHz, RadioFrequency::Band2_4GHz};  ///< best first
  int signal = -55;                                                                            ///< dBm
  int transmitRate = 300;               ///< Mbit/s towards it
  int receiveRate = 150;                ///< Mbit/s from it
  std::optional<int> joinMilliseconds;  ///< instead of the timings' own
  int arrivesAt = 0;
  std::optional<int> leavesAt;
  std::optional<int> pressesAfter;  ///< seconds from the opening of a WPS session to its button
  std::vector<Roam> roams;
  int broadcastsPerSecond = 0;  ///< frames for everybody that it sends while connected

  bool operator==(const Device&) const = default;
};

/// A radio that applies a plan badly.
struct ApplyFault {
  RadioFrequency radio = RadioFrequency::Error;
  int skip = 0;                     ///< so many plans are applied well before
  int times = 1;                    ///< then so many badly
  std::string reason;               ///< why they fail; empty for plans that are applied, but slowly
  std::optional<int> milliseconds;  ///< how long they take

  bool operator==(const ApplyFault&) const = default;
};

/// A radio that cannot listen.
struct ScanFault {
  RadioFrequency radio = RadioFrequency::Error;
  int skip = 0;
  int times = 1;
  std::string reason;

  bool operator==(const ScanFault&) const = default;
};

struct Faults {
  std::vector<ApplyFault> apply;
  std::vector<ScanFault> scan;

  bool operator==(const Faults&) const = default;
};

/// How long things take.
struct Timings {
  int applyMilliseconds = 20;      ///< telling a radio what it is to do
  int bssMilliseconds = 50;        ///< until BSSs that start are up
  int scanMilliseconds = 800;      ///< listening on all channels of a radio
  int joinMilliseconds = 300;      ///< from seeing an access point to being connected
  int joinSpreadMilliseconds = 0;  ///< each join of a device takes up to so much longer, at random

  bool operator==(const Timings&) const = default;
};

struct Scenario {
  std::int64_t seed = 1;  ///< of all random numbers
  std::set<std::string> bridges = {"br0", "br-guest"};
  std::vector<AccessPoint> neighbours;
  std::vector<Device> devices;
  std::vector<MeshNode> meshNodes;
  Faults faults;
  Timings timings;

  bool operator==(const Scenario&) const = default;
};

/// The scenario of a JSON text. InvalidArgument with a sentence that names the member, as in
/// `devices[3].address is not a MAC address`, for one that is not of the form or that cannot be.
Result<Scenario> ParseScenario(const std::string& text);

/// The scenario in a file. NotFound for a file that cannot be read, and as above with the file's name in
/// front.
Result<Scenario> LoadScenario(const std::string& path);

}  // namespace TALO::Wifid
