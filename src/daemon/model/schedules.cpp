#include "daemon/model/schedules.h"

#include "daemon/model/networks.h"
#include "daemon/model/radios.h"
#include "daemon/model/text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

using Wifi::NetworkSchedule;
using Wifi::ScheduleWindow;

namespace {

constexpr int kMinutesPerWeek = 7 * 24 * 60;
constexpr std::size_t kMaximumWindows = 64;

Refusal Refuse(const NetworkSchedule& schedule, const std::string& why,
               ErrorCode code = ErrorCode::InvalidArgument) {
  return {code, "the schedule of network " + std::to_string(schedule.networkId) + " " + why};
}

std::string Name(const ScheduleWindow& window) {
  return std::to_string(window.start) + " to " + std::to_string(window.end);
}

Result<void> CheckWindows(const NetworkSchedule& schedule) {
  const std::vector<ScheduleWindow>& sorted = schedule.windows;
  if (sorted.size() > kMaximumWindows) {
    return Refuse(
        schedule,
        "has " + std::to_string(sorted.size()) + " windows, it may have " + std::to_string(kMaximumWindows),
        ErrorCode::LimitReached);
  }
  for (const ScheduleWindow& window : sorted) {
    if (window.start < 0 || window.end > kMinutesPerWeek) {
      return Refuse(schedule, "has the window " + Name(window) + ", the week is from 0 to " +
                                  std::to_string(kMinutesPerWeek));
    }
    if (window.start == window.end) {
      return Refuse(schedule, "has the window " + Name(window) + ", which is empty");
    }
    if (window.start > window.end) {
      return Refuse(schedule, "has the window " + Name(window) + ", which ends before it starts");
    }
  }
  const auto first = std::ranges::adjacent_find(
      sorted, [](const ScheduleWindow& a, const ScheduleWindow& b) { return b.start < a.end; });
  if (first != sorted.end()) {
    const ScheduleWindow& second = *std::next(first);
    return Refuse(schedule, "has the windows " + Name(*first) + " and " + Name(second) + ", which overlap");
  }
  return {};
}

}  // namespace

Result<void> CheckSchedule(const NetworkSchedule& schedule) {
  switch (schedule.mode) {
    case ScheduleMode::ValidFor:
      if (!schedule.windows.empty()) {
        return Refuse(schedule, "has " + std::to_string(schedule.windows.size()) +
                                    " windows, which ValidFor does not take");
      }
      if (schedule.validFor < 0) {
        return Refuse(schedule, "is valid for " + std::to_string(schedule.validFor) +
                                    " seconds, it must be at least 1, or 0 for none");
      }
      return {};
    case ScheduleMode::Customized:
      if (schedule.validFor != 0) {
        return Refuse(schedule, "is valid for " + std::to_string(schedule.validFor) +
                                    " seconds, which Customized does not take");
      }
      return CheckWindows(schedule);
    case ScheduleMode::Error:
      break;
  }
  return Refusal{ErrorCode::InvalidArgument,
                 "the schedule mode " + NameOrNumber(schedule.mode) + " does not exist"};
}

Result<Change<void>> SetSchedule(const State& state, const Capabilities& capabilities,
                                 const NetworkSchedule& schedule, std::int64_t now) {
  if (auto network = FindNetwork(state, schedule.networkId); !network.Succeeded()) {
    return network.Why();
  }
  const auto radios = ResolveRadios(state, capabilities, schedule.radio);
  if (!radios.Succeeded()) {
    return radios.Why();
  }
  NetworkSchedule sorted = schedule;
  std::vector<ScheduleWindow>& windows = sorted.windows;
  std::ranges::sort(windows, {}, [](const ScheduleWindow& w) { return std::pair(w.start, w.end); });
  if (auto check = CheckSchedule(sorted); !check.Succeeded()) {
    return check.Why();
  }

  Change<void> change{state};
  const auto network = std::ranges::find(change.state.networks, schedule.networkId, &NetworkState::id);
  std::vector<ScheduleState>& schedules = network->schedules;
  // All radios include those that were taken out of the router and may come back.
  std::erase_if(schedules, [&](const ScheduleState& had) {
    return schedule.radio == RadioFrequency::SmartConnect ||
           std::ranges::find(radios.Value(), had.radio) != radios.Value().end();
  });
  if (schedule.validFor != 0 || !windows.empty()) {
    const std::int64_t validUntil =
        schedule.mode == ScheduleMode::ValidFor ? now + schedule.validFor : std::int64_t{0};
    for (const RadioFrequency radio : radios.Value()) {
      schedules.push_back({radio, schedule.mode, validUntil, windows});
    }
    std::ranges::sort(schedules, {}, &ScheduleState::radio);
  }
  return change;
}

std::set<NetworkOnRadio> ScheduledOff(const State& state, std::int64_t now, const Calendar& calendar) {
  std::set<NetworkOnRadio> off;
  for (const NetworkState& network : state.networks) {
    for (const ScheduleState& schedule : network.schedules) {
      if (!IsOn(schedule, now, calendar)) {
        off.emplace(network.id, schedule.radio);
      }
    }
  }
  return off;
}

std::optional<std::int64_t> NextSwitchOfAll(const State& state, std::int64_t now, const Calendar& calendar) {
  std::optional<std::int64_t> earliest;
  for (const NetworkState& network : state.networks) {
    for (const ScheduleState& schedule : network.schedules) {
      const auto next = NextSwitch(schedule, now, calendar);
      if (next && (!earliest || *next < *earliest)) {
        earliest = next;
      }
    }
  }
  return earliest;
}

Wifi::ScheduleStatus ScheduleStatusOf(const State& state, std::int64_t now, const Calendar& calendar) {
  constexpr std::int64_t kFarthest = std::numeric_limits<int>::max();
  Wifi::ScheduleStatus status;
  for (const NetworkState& network : state.networks) {
    for (const ScheduleState& schedule : network.schedules) {
      const auto next = NextSwitch(schedule, now, calendar);
      const int seconds = next ? static_cast<int>(std::min(*next - now, kFarthest)) : -1;
      status[network.id].push_back({schedule.radio, schedule.mode, seconds});
    }
  }
  for (auto& [id, entries] : status) {
    std::ranges::sort(entries, {}, &Wifi::ScheduleStatusEntry::radio);
  }
  return status;
}

}  // namespace TALO::Wifid
