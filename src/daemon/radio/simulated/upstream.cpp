#include "daemon/radio/simulated/upstream.h"

#include "daemon/radio/simulated/security.h"

#include <algorithm>
#include <utility>

namespace TALO::Wifid {

namespace {

/// A parent must be so much stronger to be worth a move, in dB.
constexpr int kWorthRoaming = 8;

bool IsSameButForScanType(UpstreamGoal a, const UpstreamGoal& b) {
  a.scanType = b.scanType;
  return a == b;
}

}  // namespace

UpstreamGoal GoalOf(const StationPlan& plan) {
  return {plan.ssid, plan.user, plan.passphrase, plan.bssid, plan.securityMode, false, ScanType::Default};
}

UpstreamGoal GoalOf(const BackhaulStationPlan& plan) {
  return {
      plan.ssid, "",           plan.passphrase, Wifi::Util::MACAddress(), SecurityMode::PersonalWPA2_3Mixed,
      true,      plan.scanType};
}

Upstream::Upstream(const Surroundings& surroundings, const Air& air, std::vector<int> channels)
    : surroundings_(surroundings), air_(air), channels_(std::move(channels)) {}

void Upstream::Pursue(const std::optional<UpstreamGoal>& goal) {
  if (goal == goal_) {
    return;
  }
  const bool keepsConnection =
      goal && goal_ && phase_ == Phase::Connected && IsSameButForScanType(*goal, *goal_);
  goal_ = goal;
  refused_.clear();
  if (!keepsConnection) {
    Lose();
  } else if (goal_->scanType == ScanType::BestAP) {
    Later(Milliseconds(surroundings_.scenario.timings.scanMilliseconds), &Upstream::LookForBetter);
  } else {
    Stop();
  }
}

void Upstream::Reconnect() {
  if (MayLook()) {
    StartLooking();
  } else if (phase_ == Phase::Connected) {
    StartJoining(*target_);
  }
}

void Upstream::NoticeAir() {
  if (target_ != nullptr && !air_.IsThere(*target_)) {
    Lose();
  } else if (phase_ == Phase::Failed) {
    const auto candidates = FindCandidates();
    if (std::ranges::any_of(candidates,
                            [this](const AccessPoint* each) { return !refused_.contains(each); })) {
      StartLooking();
    }
  } else if (phase_ == Phase::Connected && goal_->scanType == ScanType::BestAP && !next_) {
    Later(Milliseconds(surroundings_.scenario.timings.scanMilliseconds), &Upstream::LookForBetter);
  }
}

LiveUpstream Upstream::GetLive() const {
  LiveUpstream live;
  live.phase = phase_;
  live.reason = reason_;
  if (goal_) {
    live.ssid = goal_->ssid;
  }
  if (target_ != nullptr) {
    live.bssid = target_->bssid;
    live.channel = target_->channel;
    if (phase_ == Phase::Connected) {
      live.signal = target_->signal;
      live.transmitRate = target_->transmitRate;
      live.connectedTime = SecondsSince(surroundings_.timers, since_);
    }
  }
  return live;
}

void Upstream::Stop() {
  if (next_) {
    surroundings_.timers.Cancel(*std::exchange(next_, std::nullopt));
  }
}

void Upstream::Later(Timers::Duration delay, void (Upstream::*next)()) {
  Stop();
  next_ = surroundings_.timers.After(delay, [this, next] {
    next_.reset();
    (this->*next)();
  });
}

void Upstream::Enter(Phase phase) {
  Stop();
  phase_ = phase;
  reason_.clear();
  if (phase != Phase::Connecting && phase != Phase::Connected) {
    target_ = nullptr;
  }
}

void Upstream::Lose() {
  if (MayLook()) {
    StartLooking();
  } else {
    Enter(Phase::Disabled);
  }
}

void Upstream::StartLooking() {
  Enter(Phase::Scanning);
  Later(Milliseconds(surroundings_.scenario.timings.scanMilliseconds), &Upstream::FinishLooking);
}

std::vector<const AccessPoint*> Upstream::FindCandidates() const {
  std::vector<const AccessPoint*> candidates = air_.HeardOn(channels_);
  std::erase_if(candidates, [this](const AccessPoint* each) {
    return each->ssid != goal_->ssid || (goal_->backhaul && !each->backhaul) ||
           (goal_->bssid != Wifi::Util::MACAddress() && each->bssid != goal_->bssid);
  });
  return candidates;
}

bool Upstream::CanJoin(const AccessPoint& accessPoint) const {
  return CanMeet(goal_->securityMode, accessPoint.securityMode) && accessPoint.user == goal_->user &&
         accessPoint.passphrase == goal_->passphrase;
}

void Upstream::FinishLooking() {
  std::vector<const AccessPoint*> candidates = FindCandidates();
  if (candidates.empty()) {
    Fail("no such access point");
    return;
  }
  std::erase_if(candidates, [this](const AccessPoint* each) {
    return !CanMeet(goal_->securityMode, each->securityMode);
  });
  if (candidates.empty()) {
    Fail("security mode differs");
    return;
  }
  // Which of them takes the password shows only when joining; the strongest tells that none does.
  const auto fitting =
      std::ranges::find_if(candidates, [this](const AccessPoint* each) { return CanJoin(*each); });
  StartJoining(fitting != candidates.end() ? **fitting : *candidates.front());
}

void Upstream::LookForBetter() {
  for (const AccessPoint* each : FindCandidates()) {
    if (each->signal >= target_->signal + kWorthRoaming && CanJoin(*each)) {
      StartJoining(*each);
      return;
    }
  }
}

void Upstream::StartJoining(const AccessPoint& accessPoint) {
  Enter(Phase::Connecting);
  target_ = &accessPoint;
  Later(Milliseconds(surroundings_.scenario.timings.joinMilliseconds), &Upstream::FinishJoining);
}

void Upstream::FinishJoining() {
  if (!CanJoin(*target_)) {
    Fail(IsEnterprise(target_->securityMode) ? "wrong user or password" : "wrong password");
    return;
  }
  Enter(Phase::Connected);
  since_ = surroundings_.timers.Now();
  if (goal_->scanType == ScanType::BestAP) {
    // A better one may have appeared meanwhile.
    Later(Milliseconds(surroundings_.scenario.timings.scanMilliseconds), &Upstream::LookForBetter);
  }
}

void Upstream::Fail(const std::string& reason) {
  Enter(Phase::Failed);
  reason_ = reason;
  const auto candidates = FindCandidates();
  refused_ = {candidates.begin(), candidates.end()};
}

}  // namespace TALO::Wifid
