#include "daemon/radio/simulated/devices.h"

#include "daemon/radio/simulated/hardware.h"
#include "daemon/radio/simulated/security.h"

#include <algorithm>
#include <utility>

namespace TALO::Wifid {

namespace {

bool CanUse(const Device& device, RadioFrequency radio) {
  return std::ranges::any_of(device.bands, [radio](RadioFrequency band) { return IsSameBand(band, radio); });
}

}  // namespace

Devices::Devices(const Surroundings& surroundings, const Capabilities& capabilities,
                 FindOpenBSSs findOpenBSSs)
    : surroundings_(surroundings),
      capabilities_(capabilities),
      findOpenBSSs_(std::move(findOpenBSSs)),
      random_(static_cast<std::uint32_t>(surroundings.scenario.seed)) {
  for (const Device& device : surroundings.scenario.devices) {
    members_.push_back({&device, device.knows, device.arrivesAt == 0, std::nullopt, std::nullopt,
                        BroadcastMeter(device.broadcastsPerSecond)});
  }
  for (Member& member : members_) {
    PlanTheDay(member);
  }
}

void Devices::PlanTheDay(Member& member) {
  const Device& device = *member.device;
  if (device.arrivesAt > 0) {
    surroundings_.timers.After(Seconds(device.arrivesAt), [this, &member] { Arrive(member); });
  }
  for (const Roam& roam : device.roams) {
    surroundings_.timers.After(Seconds(roam.at), [this, &member, &roam] {
      if (const auto radio = RadioMeant(capabilities_, roam.radio)) {
        MoveTo(member, *radio);
      }
    });
  }
  if (device.leavesAt) {
    surroundings_.timers.After(Seconds(*device.leavesAt), [this, &member] { Leave(member); });
  }
}

void Devices::Arrive(Member& member) {
  member.there = true;
  LookFor(member);
}

void Devices::Leave(Member& member) {
  member.there = false;
  if (member.joining) {
    surroundings_.timers.Cancel(*std::exchange(member.joining, std::nullopt));
  }
  Disconnect(member, "left");
}

void Devices::MoveTo(Member& member, RadioFrequency radio) {
  if (!member.connection) {
    return;
  }
  std::vector<OpenBSS> bsss = findOpenBSSs_();
  const auto now = std::ranges::find(
      bsss, member.connection->interface,
      [](const OpenBSS& bss) -> const auto& { return bss.plan->interface; });
  if (now == bsss.end() || now->radio == radio) {
    return;
  }
  const std::string ssid = now->plan->ssid;
  std::erase_if(bsss, [&](const OpenBSS& bss) { return bss.radio != radio || bss.plan->ssid != ssid; });
  if (const auto choice = Choose(member, bsss)) {
    Disconnect(member, "roamed");
    Connect(member, *choice);
  }
}

void Devices::Look() {
  for (Member& member : members_) {
    LookFor(member);
  }
}

void Devices::LookFor(Member& member) {
  if (member.there && !member.connection && !member.joining && Choose(member, findOpenBSSs_())) {
    member.joining =
        surroundings_.timers.After(DrawJoinTime(*member.device), [this, &member] { FinishJoining(member); });
  }
}

// A better BSS may have come up while it was joining, and the one it saw may be gone.
void Devices::FinishJoining(Member& member) {
  member.joining.reset();
  if (const auto choice = Choose(member, findOpenBSSs_())) {
    Connect(member, *choice);
  }
}

std::optional<Devices::Choice> Devices::Choose(const Member& member, const std::vector<OpenBSS>& bsss) const {
  for (const Credential& credential : member.knows) {
    for (const RadioFrequency band : member.device->bands) {
      for (const OpenBSS& bss : bsss) {
        if (IsSameBand(band, bss.radio) && DoesOpen(credential, *bss.plan) &&
            Admits(bss.plan->access, member.device->address)) {
          return Choice{bss, credential.passphrase};
        }
      }
    }
  }
  return std::nullopt;
}

void Devices::Connect(Member& member, const Choice& choice) {
  member.connection = Connection{choice.bss.plan->interface, choice.bss.plan->networkId, choice.passphrase,
                                 surroundings_.timers.Now(), ++connections_};
  member.broadcasts.Connect(surroundings_.timers.Now(),
                            BroadcastMaximum(*choice.bss.broadcastLimit, member.device->address));
  surroundings_.emit(
      StationConnected{member.device->address, member.connection->networkId, member.connection->interface});
}

void Devices::Disconnect(Member& member, const std::string& reason) {
  if (const auto connection = std::exchange(member.connection, std::nullopt)) {
    member.broadcasts.Disconnect(surroundings_.timers.Now());
    surroundings_.emit(
        StationDisconnected{member.device->address, connection->networkId, connection->interface, reason});
  }
}

void Devices::Drop(const std::string& interface, const std::string& reason, const Which& which) {
  std::vector<Member*> dropped;
  for (Member& member : members_) {
    if (member.IsOn(interface) && which(member.device->address, member.connection->passphrase)) {
      dropped.push_back(&member);
    }
  }
  std::ranges::sort(dropped, {}, [](const Member* member) { return member->connection->order; });
  for (Member* member : dropped) {
    Disconnect(*member, reason);
    LookFor(*member);
  }
}

void Devices::LimitBroadcasts(const std::string& interface, const Wifi::MACFilterGlobal& limit) {
  for (Member& member : members_) {
    if (member.IsOn(interface)) {
      member.broadcasts.Limit(surroundings_.timers.Now(), BroadcastMaximum(limit, member.device->address));
    }
  }
}

int Devices::PassingBroadcasts(const std::string& interface) const {
  int perSecond = 0;
  for (const Member& member : members_) {
    perSecond += member.IsOn(interface) ? member.broadcasts.PassingPerSecond() : 0;
  }
  return perSecond;
}

std::map<Wifi::Util::MACAddress, BroadcastCount> Devices::CountBroadcasts() const {
  std::map<Wifi::Util::MACAddress, BroadcastCount> counts;
  for (const Member& member : members_) {
    if (member.device->broadcastsPerSecond > 0) {
      counts[member.device->address] = member.broadcasts.CountAt(surroundings_.timers.Now());
    }
  }
  return counts;
}

std::vector<LiveStation> Devices::StationsOf(const std::string& interface) const {
  std::vector<const Member*> connected;
  for (const Member& member : members_) {
    if (member.IsOn(interface)) {
      connected.push_back(&member);
    }
  }
  std::ranges::sort(connected, {}, [](const Member* member) { return member->connection->order; });
  std::vector<LiveStation> stations;
  for (const Member* member : connected) {
    const Device& device = *member->device;
    stations.push_back({device.address, device.name, device.ipAddress, device.signal, device.transmitRate,
                        device.receiveRate, SecondsSince(surroundings_.timers, member->connection->since)});
  }
  return stations;
}

bool Devices::CanReach(std::size_t device, const OpenBSS& bss) const {
  const Member& member = members_[device];
  return member.there && CanUse(*member.device, bss.radio) &&
         Admits(bss.plan->access, member.device->address);
}

void Devices::Enrol(std::size_t device, const OpenBSS& bss) {
  Member& member = members_[device];
  const Credential learned{bss.plan->ssid, bss.plan->passphrase};
  std::erase_if(member.knows,
                [&learned](const Credential& credential) { return credential.ssid == learned.ssid; });
  member.knows.insert(member.knows.begin(), learned);
  if (member.joining) {
    surroundings_.timers.Cancel(*std::exchange(member.joining, std::nullopt));
  }
  Disconnect(member, "left");
  Connect(member, {bss, learned.passphrase});
}

// Not std::uniform_int_distribution: its numbers differ between libraries.
Timers::Duration Devices::DrawJoinTime(const Device& device) {
  const Timings& timings = surroundings_.scenario.timings;
  const auto values = static_cast<std::uint32_t>(timings.joinSpreadMilliseconds) + 1;
  return Milliseconds(device.joinMilliseconds.value_or(timings.joinMilliseconds)) +
         Timers::Duration(random_() % values);
}

}  // namespace TALO::Wifid
