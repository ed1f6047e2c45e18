#pragma once

#include "daemon/model/live.h"
#include "daemon/model/plan.h"
#include "daemon/radio/simulated/air.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// The access point that a station is to join.
struct UpstreamGoal {
  std::string ssid;
  std::string user;
  std::string passphrase;
  Wifi::Util::MACAddress bssid;  ///< the only one to join; none for any
  SecurityMode securityMode = SecurityMode::Error;
  bool backhaul = false;  ///< joins mesh parents only
  ScanType scanType = ScanType::Default;

  bool operator==(const UpstreamGoal&) const = default;
};

UpstreamGoal GoalOf(const StationPlan& plan);
UpstreamGoal GoalOf(const BackhaulStationPlan& plan);

/// One station of a radio towards an upstream access point: looks for it, joins it, loses it, looks again.
class Upstream {
 public:
  Upstream(const Surroundings& surroundings, const Air& air, std::vector<int> channels);
  Upstream(const Upstream&) = delete;
  Upstream& operator=(const Upstream&) = delete;

  /// Nothing for a station that is off. The goal that it has already changes nothing; another scan type alone
  /// keeps a connection.
  void Pursue(const std::optional<UpstreamGoal>& goal);

  /// Drops the connection and starts again. With ScanType::Disable it rejoins the parent it had, without
  /// looking; where it had none it stays as it is.
  void Reconnect();

  /// An access point has appeared or vanished.
  void NoticeAir();

  LiveUpstream GetLive() const;

 private:
  using Phase = LiveUpstream::Phase;

  bool MayLook() const { return goal_ && goal_->scanType != ScanType::Disable; }
  void Stop();
  void Enter(Phase phase);
  void Lose();
  void StartLooking();
  void FinishLooking();
  void LookForBetter();
  void StartJoining(const AccessPoint& accessPoint);
  void FinishJoining();
  void Fail(const std::string& reason);
  std::vector<const AccessPoint*> FindCandidates() const;
  bool CanJoin(const AccessPoint& accessPoint) const;
  void Later(Timers::Duration delay, void (Upstream::*next)());

  const Surroundings& surroundings_;
  const Air& air_;
  std::vector<int> channels_;
  std::optional<UpstreamGoal> goal_;
  Phase phase_ = Phase::Disabled;
  std::string reason_;
  const AccessPoint* target_ = nullptr;  ///< while connecting or connected
  Timers::Duration since_{};
  std::optional<Timers::Id> next_;
  std::set<const AccessPoint*> refused_;  ///< the candidates that were there when it failed
};

}  // namespace TALO::Wifid
