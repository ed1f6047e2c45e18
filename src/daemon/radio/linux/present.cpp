#include "daemon/radio/linux/present.h"

namespace TALO::Wifid {

namespace {

struct Reached {
  Present& present;

  void operator()(const RadioIsDown&) const {
    present.channel.reset();
    present.sound = true;
    present.bsss.clear();
    present.power.reset();
  }
  void operator()(const RadioIsUp& outcome) const {
    present.channel = outcome.channel;
    present.sound = true;
    // The radio was not there, so it has none.
    present.bsss.clear();
    present.lastChannel = outcome.channel.channel;
  }
  void operator()(const BSSIsDown& outcome) const { present.bsss.erase(outcome.interface); }
  void operator()(const BSSIsUp& outcome) const { present.bsss[outcome.bss.interface] = {outcome.bss, true}; }
  // It may have gone down meanwhile, and is as sound as it was.
  void operator()(const BSSHasChanged& outcome) const {
    present.bsss[outcome.bss.interface].bss = outcome.bss;
  }
  void operator()(const PowerIs& outcome) const {
    present.power = outcome.power;
    present.powerWasSet = true;
  }
  void operator()(const StationIs& outcome) const { present.station = {outcome.station, true}; }
  void operator()(const BackhaulStationIs& outcome) const {
    present.backhaulStation = {outcome.station, true};
  }
  void operator()(const ListenerIs&) const {}
  void operator()(const StationsRejoin&) const {}
};

struct Doubted {
  Present& present;

  void operator()(const RadioIsDown&) const { present.sound = false; }
  void operator()(const RadioIsUp&) const { present.sound = false; }
  void operator()(const BSSIsDown& outcome) const { DoubtBSS(outcome.interface); }
  // What did not come up may be there all the same, so that it is taken down first the next time.
  void operator()(const BSSIsUp& outcome) const {
    present.bsss[outcome.bss.interface] = {outcome.bss, false};
  }
  void operator()(const BSSHasChanged& outcome) const { DoubtBSS(outcome.bss.interface); }
  void operator()(const PowerIs&) const { present.power.reset(); }
  void operator()(const StationIs& outcome) const { DoubtStation(present.station, outcome.station); }
  void operator()(const BackhaulStationIs& outcome) const {
    DoubtStation(present.backhaulStation, outcome.station);
  }
  void operator()(const ListenerIs&) const {}
  void operator()(const StationsRejoin&) const {}

  void DoubtBSS(const std::string& interface) const {
    const auto bss = present.bsss.find(interface);
    if (bss != present.bsss.end()) {
      bss->second.sound = false;
    }
  }
  template <typename Plan>
  static void DoubtStation(PresentStation<Plan>& station, const std::optional<Plan>& wanted) {
    station = {wanted ? wanted : station.plan, false};
  }
};

}  // namespace

void Present::Reach(const Outcome& outcome) { std::visit(Reached{*this}, outcome); }

void Present::Doubt(const Outcome& outcome) { std::visit(Doubted{*this}, outcome); }

}  // namespace TALO::Wifid
