#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/live.h"
#include "daemon/model/plan.h"
#include "daemon/radio/simulated/broadcasts.h"
#include "daemon/radio/simulated/surroundings.h"

#include <functional>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// A BSS that is up; good until a radio changes.
struct OpenBSS {
  RadioFrequency radio = RadioFrequency::Error;
  const BSSPlan* plan = nullptr;
  const Wifi::MACFilterGlobal* broadcastLimit = nullptr;
};

/// The scenario's devices: where they are, what they know and which BSS each is connected to.
class Devices {
 public:
  using FindOpenBSSs = std::function<std::vector<OpenBSS>()>;
  /// Says for a device and the passphrase it used whether it is meant.
  using Which = std::function<bool(const Wifi::Util::MACAddress& device, const std::string& passphrase)>;

  /// `findOpenBSSs` gives them in the order of radios and BSSs.
  Devices(const Surroundings& surroundings, const Capabilities& capabilities, FindOpenBSSs findOpenBSSs);
  Devices(const Devices&) = delete;
  Devices& operator=(const Devices&) = delete;

  /// Whoever is there and not connected looks for a BSS: to be called when there may be one more.
  void Look();

  /// Disconnects from a BSS those that are meant; they look again at once.
  void Drop(const std::string& interface, const std::string& reason, const Which& which);

  /// A limit for those that are connected to a BSS; whoever connects brings its own from there.
  void LimitBroadcasts(const std::string& interface, const Wifi::MACFilterGlobal& limit);

  /// Frames for everybody that pass on a BSS each second.
  int PassingBroadcasts(const std::string& interface) const;

  /// Of every device that sends any, what it has sent since the start.
  std::map<Wifi::Util::MACAddress, BroadcastCount> CountBroadcasts() const;

  /// In the order in which they connected.
  std::vector<LiveStation> StationsOf(const std::string& interface) const;

  /// Whether a device of the scenario is there, can use the BSS and is admitted to it.
  bool CanReach(std::size_t device, const OpenBSS& bss) const;

  /// Teaches a device the BSS's network, which becomes the one that it likes best, and connects it there.
  void Enrol(std::size_t device, const OpenBSS& bss);

 private:
  struct Connection {
    std::string interface;
    int networkId = 0;
    std::string passphrase;
    Timers::Duration since{};
    int order = 0;
  };
  struct Member {
    const Device* device = nullptr;
    std::vector<Credential> knows;
    bool there = false;
    std::optional<Connection> connection;
    std::optional<Timers::Id> joining;
    BroadcastMeter broadcasts;

    bool IsOn(const std::string& interface) const { return connection && connection->interface == interface; }
  };
  struct Choice {
    OpenBSS bss;
    std::string passphrase;
  };

  void PlanTheDay(Member& member);
  void Arrive(Member& member);
  void Leave(Member& member);
  void MoveTo(Member& member, RadioFrequency radio);
  void LookFor(Member& member);
  void FinishJoining(Member& member);
  std::optional<Choice> Choose(const Member& member, const std::vector<OpenBSS>& bsss) const;
  void Connect(Member& member, const Choice& choice);
  void Disconnect(Member& member, const std::string& reason);
  Timers::Duration DrawJoinTime(const Device& device);

  const Surroundings& surroundings_;
  const Capabilities& capabilities_;
  FindOpenBSSs findOpenBSSs_;
  std::mt19937 random_;
  std::vector<Member> members_;
  int connections_ = 0;
};

}  // namespace TALO::Wifid
